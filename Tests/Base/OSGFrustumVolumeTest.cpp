#include "OSGFrustumVolume.h"

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "OSGBoxVolume.h"
#include "RandomNumbers.h"

namespace
{
using namespace OSG;
using OSG::Test::RandomNumbers;

/// x, y from 0 to 1 and z from 0 down to -1.
FrustumVolume unit_box()
{
    return FrustumVolume(
        Plane(Vec3f(0, 0, -1), Pnt3f(0, 0, 0)), Plane(Vec3f(0, 0, 1), Pnt3f(0, 0, -1)),
        Plane(Vec3f(1, 0, 0), Pnt3f(0, 0, 0)), Plane(Vec3f(-1, 0, 0), Pnt3f(1, 0, 0)),
        Plane(Vec3f(0, -1, 0), Pnt3f(0, 1, 0)), Plane(Vec3f(0, 1, 0), Pnt3f(0, 0, 0)));
}

TEST(FrustumVolume, StartsWithSixPlanesThatCullNothing)
{
    FrustumVolume const frustum;
    EXPECT_FALSE(frustum.isEmpty());
    for(UInt32 i = 0; i < 6; ++i)
        EXPECT_EQ(frustum.getPlane(i), Plane());
    EXPECT_TRUE(frustum.intersect(Pnt3f(1e30f, -1e30f, 0)));
}

TEST(FrustumVolume, KeepsThePlanesContiguouslyInTheOrderOfTheArguments)
{
    FrustumVolume const frustum = unit_box();
    Plane const *const first = &frustum.getPlane(0);
    Vec3f const normals[] = {{0, 0, -1}, {0, 0, 1}, {1, 0, 0}, {-1, 0, 0}, {0, -1, 0}, {0, 1, 0}};
    for(UInt32 i = 0; i < 6; ++i)
    {
        EXPECT_EQ(frustum.getPlane(i).getNormal(), normals[i]);
        EXPECT_EQ(&frustum.getPlane(i), first + i);
    }
}

TEST(FrustumVolume, CornersBoundsAndCenterFollowFromThePlanes)
{
    std::array<Pnt3f, 8> corners;
    ASSERT_TRUE(unit_box().getCorners(corners));
    Pnt3f const expected[] = {{0, 0, 0},  {1, 0, 0},  {1, 1, 0},  {0, 1, 0},
                              {0, 0, -1}, {1, 0, -1}, {1, 1, -1}, {0, 1, -1}};
    for(int i = 0; i < 8; ++i)
        EXPECT_EQ(corners[i], expected[i]) << i;
    Pnt3f min, max, center;
    unit_box().getBounds(min, max);
    EXPECT_EQ(min, Pnt3f(0, 0, -1));
    EXPECT_EQ(max, Pnt3f(1, 1, 0));
    unit_box().getCenter(center);
    EXPECT_EQ(center, Pnt3f(0.5f, 0.5f, -0.5f));
}

TEST(FrustumVolume, BoundsWithoutCornersAreTheLargestNumbers)
{
    std::array<Pnt3f, 8> corners;
    EXPECT_FALSE(FrustumVolume().getCorners(corners));
    Pnt3f min, max;
    FrustumVolume().getBounds(min, max);
    EXPECT_LT(min[0], -3e38f);
    EXPECT_GT(max[2], 3e38f);
}

TEST(FrustumVolume, ExtendedItHoldsThePoint)
{
    FrustumVolume frustum = unit_box();
    EXPECT_FALSE(frustum.intersect(Pnt3f(2, 0.5f, -3)));
    frustum.extendBy(Pnt3f(2, 0.5f, -3));
    EXPECT_TRUE(frustum.intersect(Pnt3f(2, 0.5f, -3)));
    EXPECT_EQ(frustum.getPlane(0), unit_box().getPlane(0));
    frustum.extendBy(BoxVolume(Pnt3f(0, 0, 0), Pnt3f(1, 5, 1)));
    EXPECT_TRUE(frustum.intersect(Pnt3f(1, 5, 1)));
}

TEST(FrustumVolume, TransformKeepsWhatIsInside)
{
    RandomNumbers random(12);
    Matrix projection; // x/(2-z), y/(2-z), z/(2-z): all of the unit box has w >= 2
    projection[2][3] = -1;
    projection[3][3] = 2;
    FrustumVolume const box = unit_box();
    FrustumVolume moved = box;
    moved.transform(projection);
    for(int i = 0; i < 2000; ++i)
    {
        Pnt3f const p = random.point(-1.5f, 1.5f);
        Pnt3f out;
        projection.multFull(p, out);
        bool near_edge = false;
        for(Plane const &plane : box.getPlanes())
            near_edge = near_edge || std::abs(plane.distance(p)) < 1e-4f;
        if(near_edge)
            continue;
        ASSERT_EQ(box.intersect(p), moved.intersect(out)) << testing::PrintToString(p);
    }
}

TEST(FrustumVolume, SingularMatrixIsLoggedOnceAndLeavesThePlanes)
{
    OSG::Test::LogCapture log;
    FrustumVolume frustum = unit_box();
    Matrix flat;
    flat.setScale(0);
    frustum.transform(flat);
    EXPECT_EQ(frustum, unit_box());
    EXPECT_EQ(log.messages().size(), 1u);
}
} // namespace
