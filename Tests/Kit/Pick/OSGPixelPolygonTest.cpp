#include "OSGPixelPolygon.h"

#include <cmath>
#include <limits>
#include <numbers>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
using Points = std::vector<Pnt2f>;

Points square(Real32 from, Real32 to) { return {{from, from}, {to, from}, {to, to}, {from, to}}; }

// Every second corner of a regular polygon, one after the other.
Points star(int corners, int step, Real32 radius)
{
    Points points;
    for(int i = 0; i < corners; ++i)
    {
        Real64 const angle = 2 * std::numbers::pi * i * step / corners;
        points.emplace_back(radius * std::sin(angle), -radius * std::cos(angle));
    }
    return points;
}

Points operator+(Points points, Points const &more)
{
    points.insert(points.end(), more.begin(), more.end());
    return points;
}

TEST(PixelPolygon, HoldsWhatItsLineEncloses)
{
    PixelPolygon const polygon(square(10, 20));
    EXPECT_TRUE(polygon.contains({15, 15}));
    EXPECT_FALSE(polygon.contains({9, 15}));
    EXPECT_FALSE(polygon.contains({15, 21}));
    EXPECT_EQ(polygon.getBoundary().getEdges().size(), 4u);
}

TEST(PixelPolygon, ItsEdgeBelongsToIt)
{
    PixelPolygon const polygon({{0, 0}, {30, 10}, {0, 20}});
    for(PixelPoint const point : {PixelPoint{0, 0}, {0, 7}, {30, 10}, {15, 5}, {15, 15}})
        EXPECT_TRUE(polygon.contains(point)) << point.x << ' ' << point.y;
    EXPECT_FALSE(polygon.contains({-0.001, 7}));
    EXPECT_FALSE(polygon.contains({30.001, 10}));
}

TEST(PixelPolygon, WhatItsLineGoesRoundTwiceIsOutside)
{
    PixelPolygon const pentagram(star(5, 2, 100));
    EXPECT_FALSE(pentagram.contains({0, 0}));
    EXPECT_TRUE(pentagram.contains({0, -80}));
    EXPECT_FALSE(pentagram.contains({0, 80}));
    // Five tips of two edges each, and five edges of the pentagon between them.
    EXPECT_EQ(pentagram.getBoundary().getEdges().size(), 15u);
    PixelPolygon const twoSquares(square(0, 30) + Points{{0, 0}} + square(10, 20) +
                                  Points{{10, 10}});
    EXPECT_FALSE(twoSquares.contains({15, 15}));
    EXPECT_TRUE(twoSquares.contains({25, 5}));
}

TEST(PixelPolygon, ALineDrawnTwiceOverHoldsNothing)
{
    EXPECT_TRUE(PixelPolygon(square(0, 9) + square(0, 9)).isEmpty());
    EXPECT_TRUE(PixelPolygon(star(7, 3, 123.4f) + star(7, 3, 123.4f)).isEmpty());
    PixelPolygon const thrice(star(7, 3, 123.4f) + star(7, 3, 123.4f) + star(7, 3, 123.4f));
    EXPECT_TRUE(thrice.contains({0, -120}));
}

TEST(PixelPolygon, StrokesThatBoundNoAreaCountForNothing)
{
    PixelPolygon const spur({{0, 0}, {10, 0}, {10, 5}, {40, 5}, {10, 5}, {10, 10}, {0, 10}});
    EXPECT_TRUE(spur.contains({5, 5}));
    EXPECT_TRUE(spur.contains({10, 5}));
    EXPECT_FALSE(spur.contains({25, 5}));
    EXPECT_EQ(spur.getBox().right, 10);
    // Inwards, and half of it back along another line.
    PixelPolygon const inner({{0, 0}, {20, 0}, {20, 20}, {0, 20}, {0, 10}, {10, 10}, {0, 10}});
    EXPECT_TRUE(inner.contains({5, 10}));
    EXPECT_EQ(inner.getBoundary().getEdges().size(), 5u);
}

TEST(PixelPolygon, WithoutAnAreaItIsEmpty)
{
    Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
    Real32 const infinite = std::numeric_limits<Real32>::infinity();
    for(Points const &points :
        {Points{}, Points{{1, 1}}, Points{{1, 1}, {5, 5}}, Points{{1, 1}, {1, 1}, {1, 1}},
         Points{{0, 0}, {5, 5}, {9, 9}}, Points{{0, 0}, {5, nan}, {9, 0}},
         Points{{0, 0}, {5, infinite}, {9, 0}}})
    {
        PixelPolygon const polygon(points);
        EXPECT_TRUE(polygon.isEmpty());
        EXPECT_FALSE(polygon.contains({1, 1}));
    }
}

TEST(PixelPolygon, MayBeAsLargeAsNumbersAre)
{
    PixelPolygon const huge({{-1e30f, -1e30f}, {1e30f, -1e30f}, {0, 1e30f}});
    EXPECT_TRUE(huge.contains({300, 200}));
    EXPECT_FALSE(huge.contains({0, 2e30}));
}

bool is_odd(Points const &points, PixelPoint const &point)
{
    bool odd = false;
    for(std::size_t i = 0; i < points.size(); ++i)
    {
        Pnt2f const &a = points[i];
        Pnt2f const &b = points[(i + 1) % points.size()];
        if((a[1] > point.y) != (b[1] > point.y) &&
           point.x <
               Real64(a[0]) + (point.y - a[1]) * (Real64(b[0]) - a[0]) / (Real64(b[1]) - a[1]))
            odd = !odd;
    }
    return odd;
}

Points random_points(RandomNumbers &random, UInt32 count, bool onGrid)
{
    Points points;
    for(UInt32 i = 0; i < count; ++i)
        points.emplace_back(onGrid ? Real32(random.below(8)) * 10 : random.real(0, 80),
                            onGrid ? Real32(random.below(8)) * 10 : random.real(0, 80));
    return points;
}

// On a grid corners meet edges, edges overlap and many cross in one point.
TEST(PixelPolygon, HoldsWhatAnOddCountOfCrossingsEncloses)
{
    RandomNumbers random(1401);
    int inside = 0;
    for(int round = 0; round < 600; ++round)
    {
        Points const points = random_points(random, 3 + random.below(20), round % 2 == 0);
        PixelPolygon const polygon(points);
        for(int i = 0; i < 60; ++i)
        {
            // Off the lines of the grid by more than an edge's width.
            PixelPoint const point = {random.real(-5, 85) + 1e-4, random.real(-5, 85) + 1e-4};
            Real64 nearest = 1;
            for(std::size_t k = 0; k < points.size(); ++k)
            {
                Pnt2f const &a = points[k];
                Pnt2f const &b = points[(k + 1) % points.size()];
                nearest = std::min(nearest, distance_between({{a[0], a[1]}, {b[0], b[1]}}, point));
            }
            if(nearest < 1e-5)
                continue;
            ASSERT_EQ(polygon.contains(point), is_odd(points, point)) << round;
            inside += polygon.contains(point) ? 1 : 0;
        }
    }
    EXPECT_GT(inside, 5000);
}

// The boundary turns parity where it is crossed, and nothing else does.
TEST(PixelPolygon, ItsBoundaryIsWhereInsideAndOutsideMeet)
{
    RandomNumbers random(77);
    for(int round = 0; round < 300; ++round)
    {
        Points const points = random_points(random, 3 + random.below(15), round % 2 == 0);
        PixelPolygon const polygon(points);
        for(int i = 0; i < 20; ++i)
        {
            PixelPoint const point = {random.real(0, 80) + 1e-4, random.real(0, 80) + 1e-4};
            int crossings = 0;
            for(PixelEdge const &edge : polygon.getBoundary().getEdges())
                if((edge.from.y > point.y) != (edge.to.y > point.y) &&
                   point.x < edge.at((point.y - edge.from.y) / (edge.to.y - edge.from.y)).x)
                    ++crossings;
            ASSERT_EQ(crossings % 2 != 0, is_odd(points, point)) << round;
        }
    }
}

TEST(PixelPolygon, AThousandRandomCornersAreNotTooMany)
{
    RandomNumbers random(5);
    Points points;
    for(int i = 0; i < 1000; ++i)
        points.emplace_back(random.real(0, 1000), random.real(0, 1000));
    PixelPolygon const polygon(points);
    for(int i = 0; i < 1000; ++i)
    {
        PixelPoint const point = {random.real(0, 1000), random.real(0, 1000)};
        EXPECT_EQ(polygon.contains(point), is_odd(points, point));
    }
}

TEST(PixelPolygon, AComblikeLineOfManyTeethIsSplitInNoTime)
{
    Points comb;
    for(int i = 0; i < 20000; ++i)
        comb.emplace_back(Real32(i), i % 2 == 0 ? 0.f : 1000.f);
    PixelPolygon const polygon(comb);
    EXPECT_GE(polygon.getBoundary().getEdges().size(), 20000u);
}

TEST(PixelPolygon, TooManyCrossingsAreSaidAndHoldNothing)
{
    Points points;
    for(int i = 0; i < 1100; ++i)
        points.emplace_back(Real32(i), i % 2 == 0 ? -1.f : 1101.f);
    for(int i = 0; i < 1100; ++i)
        points.emplace_back(i % 2 == 0 ? 1101.f : -1.f, Real32(i));
    LogCapture log;
    EXPECT_TRUE(PixelPolygon(points).isEmpty());
    EXPECT_EQ(log.count("PixelPolygon: a lasso of more than 1000000 crossings holds nothing\n"),
              1u);
}
} // namespace
} // namespace OSG::Test
