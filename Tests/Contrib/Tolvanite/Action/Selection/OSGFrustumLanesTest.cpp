#include "OSGFrustumLanes.h"

#include <limits>

#include <gtest/gtest.h>

#include "ClippingCases.h"

namespace OSG::Test
{
namespace
{
UInt32 outside_one_by_one(Pnt3f const &point, PlaneArray const &planes)
{
    UInt32 result = 0;
    for(UInt32 k = 0; k < 6; ++k)
        result |= (planes[k].isInHalfSpace(point) ? 0u : 1u) << k;
    return result;
}

TEST(FrustumLanes, EachBitIsThePlaneThatThePointIsOutOf)
{
    FrustumLanes const lanes(box_planes().data());
    EXPECT_EQ(lanes.outside({0.5f, 0.5f, -0.5f}), 0u);
    EXPECT_EQ(lanes.outside({0.5f, 0.5f, 1}), 1u << 0);
    EXPECT_EQ(lanes.outside({0.5f, 0.5f, -2}), 1u << 1);
    EXPECT_EQ(lanes.outside({-1, 0.5f, -0.5f}), 1u << 2);
    EXPECT_EQ(lanes.outside({2, 0.5f, -0.5f}), 1u << 3);
    EXPECT_EQ(lanes.outside({0.5f, 2, -0.5f}), 1u << 4);
    EXPECT_EQ(lanes.outside({0.5f, -1, -0.5f}), 1u << 5);
}

TEST(FrustumLanes, APointOnAPlaneIsInside)
{
    EXPECT_EQ(FrustumLanes(box_planes().data()).outside({1, 0, -1}), 0u);
}

TEST(FrustumLanes, AnswersAsThePlanesDoOneByOne)
{
    RandomNumbers random(32);
    for(int i = 0; i < 20000; ++i)
    {
        PlaneArray const planes = random_polytope(random);
        // Points of the planes, moved by less than rounding can hold apart, among others.
        Pnt3f point = random.point(-2, 2);
        Plane const &plane = planes[random.below(6)];
        if(i % 2 == 0)
            point = point - plane.getNormal() * plane.distance(point);
        ASSERT_EQ(FrustumLanes(planes.data()).outside(point), outside_one_by_one(point, planes));
    }
}

TEST(FrustumLanes, AnswersAsThePlanesDoWhereNumbersAreNone)
{
    Real32 const infinity = std::numeric_limits<Real32>::infinity();
    Real32 const values[] = {0.5f, infinity, -infinity, std::numeric_limits<Real32>::quiet_NaN()};
    RandomNumbers random(33);
    PlaneArray const solids[] = {box_planes(), random_polytope(random),
                                 Frustum().Volume().getPlanes()};
    for(PlaneArray const &planes : solids)
    {
        for(Real32 x : values)
        {
            for(Real32 y : values)
            {
                for(Real32 z : values)
                {
                    Pnt3f const point(x, y, z);
                    EXPECT_EQ(FrustumLanes(planes.data()).outside(point),
                              outside_one_by_one(point, planes));
                }
            }
        }
    }
}

TEST(FrustumLanes, GradesATriangleAsTheTwoTestsDo)
{
    RandomNumbers random(31);
    int seen[3] = {};
    for(int i = 0; i < 20000; ++i)
    {
        PlaneArray const planes = random_polytope(random);
        Pnt3f corners[3];
        random_triangle(random, corners);
        FrustumLanes::Grade expected = FrustumLanes::Grade::Outside;
        if(SelectionClipping::coarse_intersect(corners, 3, planes.data(), 6))
        {
            expected = SelectionClipping::containement(corners, 3, planes.data(), 6)
                           ? FrustumLanes::Grade::Contained
                           : FrustumLanes::Grade::Crossing;
        }
        ASSERT_EQ(FrustumLanes(planes.data()).grade(corners), expected) << "case " << i;
        ++seen[static_cast<int>(expected)];
    }
    EXPECT_GT(*std::min_element(seen, seen + 3), 100);
}
} // namespace
} // namespace OSG::Test
