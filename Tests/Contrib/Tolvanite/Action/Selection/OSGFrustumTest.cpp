#include "OSGFrustum.h"

#include <cstring>
#include <limits>
#include <type_traits>

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "OSGMemManager.h"
#include "RandomNumbers.h"

namespace
{
using namespace OSG;
using OSG::Test::LogCapture;
using OSG::Test::RandomNumbers;
using testing::ElementsAre;
using testing::IsEmpty;

static_assert(!std::is_polymorphic_v<Frustum> && sizeof(Frustum) == 8 * sizeof(Pnt3f));

Pnt3f const UnitCorners[8] = {{0, 0, 0},  {1, 0, 0},  {1, 1, 0},  {0, 1, 0},
                              {0, 0, -1}, {1, 0, -1}, {1, 1, -1}, {0, 1, -1}};

std::array<Pnt3f, 8> corners_of(Frustum const &f)
{
    return {f.nlb(), f.nrb(), f.nrt(), f.nlt(), f.flb(), f.frb(), f.frt(), f.flt()};
}

TEST(Frustum, StartsWithAllCornersAtTheOrigin)
{
    for(Pnt3f const &corner : corners_of(Frustum()))
        EXPECT_EQ(corner, Pnt3f());
}

TEST(Frustum, VolumeOfCoincidentCornersHasSixPlanesWithoutNormal)
{
    FrustumVolume const volume = Frustum().Volume();
    for(Plane const &plane : volume.getPlanes())
        EXPECT_EQ(plane, Plane());
}

TEST(Frustum, CornersStandInTheOrderOfTheirIndices)
{
    Frustum const frustum(UnitCorners);
    EXPECT_THAT(corners_of(frustum), testing::ElementsAreArray(UnitCorners));
    EXPECT_EQ(&frustum.flt(), &frustum.nlb() + 7);
}

TEST(Frustum, FromAnArrayItEqualsTheOneFromPoints)
{
    Pnt3f const *c = UnitCorners;
    Frustum const from_points(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7]);
    EXPECT_EQ(corners_of(from_points), corners_of(Frustum(UnitCorners)));
}

TEST(Frustum, CopiesAndAssignsItsCorners)
{
    Frustum frustum(UnitCorners);
    Frustum const copy(frustum);
    Frustum assigned;
    assigned = frustum;
    Frustum &self = frustum;
    frustum = self;
    EXPECT_EQ(corners_of(copy), corners_of(frustum));
    EXPECT_EQ(corners_of(assigned), corners_of(frustum));
    EXPECT_THAT(corners_of(frustum), testing::ElementsAreArray(UnitCorners));
}

TEST(Frustum, IdentityLeavesEveryCornerBitForBit)
{
    RandomNumbers random(21);
    Pnt3f corners[8];
    for(Pnt3f &corner : corners)
        corner = random.point(-1e6f, 1e6f);
    Frustum frustum(corners);
    frustum.multFull(Matrix());
    EXPECT_EQ(std::memcmp(&frustum.nlb(), corners, sizeof(corners)), 0);
}

TEST(Frustum, ProjectiveMatrixDividesEachCornerByItsOwnW)
{
    Matrix projection; // w = 2 - z: near corners 2, far corners 3
    projection[2][3] = -1;
    projection[3][3] = 2;
    Frustum frustum(UnitCorners);
    frustum.multFull(projection);
    Real32 const third = 1.f / 3.f;
    EXPECT_EQ(frustum.nrt(), Pnt3f(0.5f, 0.5f, 0));
    EXPECT_EQ(frustum.frt(), Pnt3f(third, third, -third));
}

TEST(Frustum, ClipSpaceTurnsBackIntoThePyramid)
{
    // Near 1, far 3, both sides at 45 degrees; its inverse carries the cube of -1 to 1 back.
    Matrix const projection(Vec4f(1, 0, 0, 0), Vec4f(0, 1, 0, 0), Vec4f(0, 0, -2, -1),
                            Vec4f(0, 0, -3, 0));
    Matrix inverse;
    ASSERT_TRUE(inverse.invertFrom(projection));
    Frustum frustum({-1, -1, -1}, {1, -1, -1}, {1, 1, -1}, {-1, 1, -1}, {-1, -1, 1}, {1, -1, 1},
                    {1, 1, 1}, {-1, 1, 1});
    frustum.multFull(inverse);
    EXPECT_TRUE(frustum.nlb().equals(Pnt3f(-1, -1, -1), 1e-5f));
    EXPECT_TRUE(frustum.frt().equals(Pnt3f(3, 3, -3), 1e-5f));
}

TEST(Frustum, CornerWithZeroWStaysUndividedAndWarnsOnce)
{
    LogCapture log;
    Matrix m; // w = x + y + z + 1: zero at flb alone
    m[0][3] = 1;
    m[1][3] = 1;
    m[2][3] = 1;
    m[3] = Vec4f(10, 20, 30, 1);
    Frustum frustum(UnitCorners);
    frustum.multFull(m);
    EXPECT_THAT(log.texts(LOG_WARNING),
                ElementsAre("TransformationMatrix<>::multFull(Pnt3, Pnt3): w == 0.0\n"));
    EXPECT_EQ(frustum.flb(), Pnt3f(10, 20, 29));
    EXPECT_EQ(frustum.nlb(), Pnt3f(10, 20, 30));
    EXPECT_EQ(frustum.nrb(), Pnt3f(5.5f, 10, 15));
    EXPECT_EQ(frustum.frt(), Pnt3f(5.5f, 10.5f, 14.5f));
}

struct PlaneCase
{
    char const *name;
    UInt32 position;
    Vec3f inward;
    Real32 distance;
};

class FrustumPlanes : public testing::TestWithParam<PlaneCase>
{
};

TEST_P(FrustumPlanes, PointIntoTheSolid)
{
    FrustumVolume const volume = Frustum(UnitCorners).Volume();
    EXPECT_EQ(volume.getPlane(GetParam().position).getNormal(), GetParam().inward);
    EXPECT_EQ(volume.getPlane(GetParam().position).getDistanceFromOrigin(), GetParam().distance);
}

INSTANTIATE_TEST_SUITE_P(
    UnitBox, FrustumPlanes,
    testing::Values(PlaneCase{"near", 0, {0, 0, -1}, 0}, PlaneCase{"far", 1, {0, 0, 1}, -1},
                    PlaneCase{"left", 2, {1, 0, 0}, 0}, PlaneCase{"right", 3, {-1, 0, 0}, -1},
                    PlaneCase{"top", 4, {0, -1, 0}, -1}, PlaneCase{"bottom", 5, {0, 1, 0}, 0}),
    [](auto const &instance) { return std::string(instance.param.name); });

TEST(Frustum, PlanesPassThroughTheThreeCornersThatDefineThem)
{
    static constexpr int through[6][3] = {{0, 3, 1}, {5, 6, 4}, {4, 7, 0},
                                          {1, 2, 5}, {6, 2, 7}, {0, 1, 4}};
    RandomNumbers random(22);
    Pnt3f c[8];
    for(int i = 0; i < 8; ++i) // warped: no face has its four corners in one plane
        c[i] = UnitCorners[i] + random.vector() * 0.1f;
    FrustumVolume const volume = Frustum(c).Volume();
    for(UInt32 k = 0; k < 6; ++k)
        EXPECT_EQ(volume.getPlane(k), Plane(c[through[k][0]], c[through[k][1]], c[through[k][2]]));
}

TEST(Frustum, MirroredCornersTurnAllNormalsOutwards)
{
    Matrix mirror;
    mirror.setScale(-1, 1, 1);
    Frustum frustum(UnitCorners);
    frustum.multFull(mirror);
    Pnt3f const middle(-0.5f, 0.5f, -0.5f);
    for(UInt32 k = 0; k < 6; ++k)
        EXPECT_FALSE(frustum.Volume().getPlane(k).isInHalfSpace(middle)) << k;
}

TEST(Frustum, FlatOrNotANumberCornersDoNoHarm)
{
    Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
    Pnt3f flat[8];
    for(int i = 0; i < 8; ++i)
        flat[i] = Pnt3f(UnitCorners[i][0], UnitCorners[i][1], 0);
    FrustumVolume const volume = Frustum(flat).Volume();
    EXPECT_TRUE(volume.intersect(Pnt3f(0.5f, 0.5f, 0)));
    flat[0] = Pnt3f(nan, nan, nan);
    EXPECT_FALSE(Frustum(flat).Volume().intersect(Pnt3f(0.5f, 0.5f, 0)));
}

TEST(Frustum, NothingIsAllocated)
{
    reset_mem_peak();
    UInt64 const before = get_mem_peak_bytes();
    Frustum frustum(UnitCorners);
    frustum.multFull(Matrix());
    EXPECT_EQ(frustum.Volume().getPlane(0).distance(Pnt3f()), 0.f);
    EXPECT_EQ(get_mem_peak_bytes(), before);
}
} // namespace
