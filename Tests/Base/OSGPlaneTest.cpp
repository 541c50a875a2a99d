#include "OSGPlane.h"

#include <limits>

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "RandomNumbers.h"

namespace
{
using namespace OSG;
using OSG::Test::RandomNumbers;

TEST(Plane, StartsWithEveryPointInItsHalfSpace)
{
    Plane const plane;
    EXPECT_EQ(plane.getNormal(), Vec3f());
    EXPECT_TRUE(plane.isInHalfSpace(Pnt3f(-1e30f, 5, 7)));
}

TEST(Plane, ThroughThreePointsSeenCounterClockwiseFromItsNormal)
{
    Plane const plane(Pnt3f(0, 0, 2), Pnt3f(5, 0, 2), Pnt3f(0, 3, 2));
    EXPECT_EQ(plane.getNormal(), Vec3f(0, 0, 1));
    EXPECT_EQ(plane.getDistanceFromOrigin(), 2.f);
}

TEST(Plane, DistanceIsSignedAlongTheNormal)
{
    Plane const plane(Vec3f(0, 8, 0), Pnt3f(7, 3, 7));
    EXPECT_EQ(plane.getNormal(), Vec3f(0, 1, 0));
    EXPECT_EQ(plane.distance(Pnt3f(1, 5, 1)), 2.f);
    EXPECT_EQ(plane.distance(Pnt3f(1, 0, 1)), -3.f);
}

TEST(Plane, PointOnThePlaneIsInItsHalfSpace)
{
    Plane const plane(Vec3f(1, 0, 0), Pnt3f(2, 0, 0));
    EXPECT_TRUE(plane.isInHalfSpace(Pnt3f(2, 9, 9)));
    EXPECT_FALSE(plane.isInHalfSpace(Pnt3f(std::nextafter(2.f, 1.f), 9, 9)));
}

TEST(Plane, NaNPointIsInNoHalfSpace)
{
    Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
    EXPECT_FALSE(Plane(Vec3f(1, 0, 0), Pnt3f()).isInHalfSpace(Pnt3f(1, nan, 0)));
    EXPECT_FALSE(Plane(Vec3f(nan, 0, 0), Pnt3f()).isInHalfSpace(Pnt3f(1, 1, 0)));
}

TEST(Plane, DistanceRoundsInItsFixedOrder)
{
    RandomNumbers random(7);
    for(int i = 0; i < 1000; ++i)
    {
        Plane const plane(random.vector(), random.point(-100, 100));
        Pnt3f const p = random.point(-100, 100);
        Vec3f const n = plane.getNormal();
        Real32 const x = n[0] * p[0];
        Real32 const xy = x + n[1] * p[1];
        Real32 const xyz = xy + n[2] * p[2];
        ASSERT_EQ(plane.distance(p), xyz - plane.getDistanceFromOrigin());
    }
}

TEST(Plane, ThroughThreePointsHasAUnitNormalAtEverySize)
{
    for(Real32 const size : {1e-38f, 1e-30f, 1e-6f, 5e-4f, 1.f, 1e6f, 1e20f, 1e38f})
    {
        Plane const plane(Pnt3f(0, 0, size), Pnt3f(size / 2, 0, size), Pnt3f(0, size, size));
        EXPECT_EQ(plane.getNormal(), Vec3f(0, 0, 1)) << size;
        EXPECT_EQ(plane.getDistanceFromOrigin(), size) << size;
    }
}

TEST(Plane, ThroughThreePointsHasTheSameNormalScaledByPowersOfTwo)
{
    RandomNumbers random(9);
    for(int i = 0; i < 1000; ++i)
    {
        Pnt3f const p[3] = {random.point(-1, 1), random.point(-1, 1), random.point(-1, 1)};
        Plane const plane(p[0], p[1], p[2]);
        ASSERT_NEAR(plane.getNormal().length(), 1.f, 1e-6f);
        for(int const exponent : {-90, -40, -10, 10, 40, 90})
        {
            auto const scaled = [exponent](Pnt3f const &point)
            {
                return Pnt3f(std::ldexp(point[0], exponent), std::ldexp(point[1], exponent),
                             std::ldexp(point[2], exponent));
            };
            Plane const same(scaled(p[0]), scaled(p[1]), scaled(p[2]));
            ASSERT_EQ(same.getNormal(), plane.getNormal()) << exponent;
            ASSERT_EQ(same.getDistanceFromOrigin(),
                      std::ldexp(plane.getDistanceFromOrigin(), exponent))
                << exponent;
        }
    }
}

TEST(Plane, CollinearPointsHoldEveryPoint)
{
    Plane const plane(Pnt3f(3, 0, 0), Pnt3f(4, 1, 1), Pnt3f(5, 2, 2));
    EXPECT_EQ(plane.getNormal(), Vec3f());
    EXPECT_EQ(plane.getDistanceFromOrigin(), 0.f);
}

TEST(Plane, ThroughAPointThatIsNotFiniteHoldsNoPoint)
{
    Real32 const infinity = std::numeric_limits<Real32>::infinity();
    for(Real32 const bad : {infinity, -infinity, std::numeric_limits<Real32>::quiet_NaN()})
    {
        Plane const plane(Pnt3f(0, 0, 0), Pnt3f(1, 0, bad), Pnt3f(0, 1, 0));
        EXPECT_FALSE(plane.isInHalfSpace(Pnt3f(0, 0, 0))) << bad;
        EXPECT_TRUE(std::isnan(plane.getDistanceFromOrigin())) << bad;
    }
}

TEST(Plane, InfiniteLineMeetsItBehindItsStartToo)
{
    Plane const plane(Vec3f(0, 0, 1), Pnt3f(0, 0, 3));
    Pnt3f point;
    EXPECT_TRUE(plane.intersectInfinite(Line(Pnt3f(1, 2, 0), Vec3f(0, 0, 1)), point));
    EXPECT_EQ(point, Pnt3f(1, 2, 3));
    EXPECT_TRUE(plane.intersectInfinite(Line(Pnt3f(1, 2, 9), Vec3f(0, 0, 1)), point));
    EXPECT_EQ(point, Pnt3f(1, 2, 3));
}

TEST(Plane, ParallelLineDoesNotMeetItAndLeavesThePoint)
{
    Plane const plane(Vec3f(0, 0, 1), Pnt3f(0, 0, 3));
    Pnt3f point(7, 7, 7);
    EXPECT_FALSE(plane.intersectInfinite(Line(Pnt3f(), Vec3f(1, 0, 0)), point));
    EXPECT_FALSE(plane.intersectInfinite(Line(Pnt3f(0, 0, 3), Vec3f(1, 0, 9e-7f)), point));
    EXPECT_FALSE(plane.intersectInfinite(Line(), point));
    EXPECT_EQ(point, Pnt3f(7, 7, 7));
}

TEST(Plane, TransformKeepsTheSideOfEveryPoint)
{
    RandomNumbers random(8);
    for(int i = 0; i < 500; ++i)
    {
        Matrix m;
        for(UInt32 c = 0; c < 4; ++c)
        {
            for(UInt32 r = 0; r < 3; ++r)
                m[c][r] = random.real(-2, 2);
        }
        if(std::abs(m.determinant()) < 0.1)
            continue;
        Plane const plane(random.vector(), random.point(-2, 2));
        Plane moved = plane;
        moved.transform(m);
        ASSERT_NEAR(moved.getNormal().length(), 1.f, 1e-5f);
        Pnt3f const p = random.point(-3, 3);
        if(std::abs(plane.distance(p)) < 1e-3f)
            continue;
        ASSERT_EQ(plane.isInHalfSpace(p), moved.isInHalfSpace(m * p));
    }
}

TEST(Plane, SingularMatrixIsLoggedAndLeavesThePlane)
{
    OSG::Test::LogCapture log;
    Plane const plane(Vec3f(1, 0, 0), Pnt3f(2, 0, 0));
    Plane moved = plane;
    Matrix flat;
    flat.setScale(0);
    moved.transform(flat);
    EXPECT_EQ(moved, plane);
    EXPECT_EQ(log.messages().size(), 1u);
}
} // namespace
