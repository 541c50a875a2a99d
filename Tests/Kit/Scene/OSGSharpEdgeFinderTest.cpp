#include "OSGSharpEdgeFinder.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
using Triangles = std::vector<std::array<Pnt3f, 3>>;

std::size_t count_sharp(Triangles const &triangles, Real64 degrees = 30)
{
    SharpEdgeFinder finder(degrees);
    for(auto const &[a, b, c] : triangles)
        finder.add(a, b, c);
    return finder.find().size();
}

void add_quad(Triangles &triangles, Pnt3f const &a, Pnt3f const &b, Pnt3f const &c, Pnt3f const &d)
{
    triangles.push_back({a, b, c});
    triangles.push_back({a, c, d});
}

/// From (0, 0, 0) to (1, 1, 1), moved by `offset`.
Triangles cube(Vec3f const &offset = Vec3f(0, 0, 0))
{
    auto const corner = [&](unsigned i)
    { return Pnt3f(i & 1 ? 1.f : 0.f, i & 2 ? 1.f : 0.f, i & 4 ? 1.f : 0.f) + offset; };
    Triangles triangles;
    for(auto const &[a, b, c, d] : {std::array<unsigned, 4>{0, 1, 3, 2},
                                    {4, 6, 7, 5},
                                    {0, 4, 5, 1},
                                    {2, 3, 7, 6},
                                    {0, 2, 6, 4},
                                    {1, 5, 7, 3}})
        add_quad(triangles, corner(a), corner(b), corner(c), corner(d));
    return triangles;
}

Triangles sphere(int around, int over)
{
    auto const point = [&](int i, int j)
    {
        Real64 const turn = 2 * std::numbers::pi * (i % around) / around;
        Real64 const height = std::numbers::pi * j / over;
        if(j == 0 || j == over) // the poles
            return Pnt3f(0, j == 0 ? 1.f : -1.f, 0);
        return Pnt3f(static_cast<Real32>(std::sin(height) * std::cos(turn)),
                     static_cast<Real32>(std::cos(height)),
                     static_cast<Real32>(std::sin(height) * std::sin(turn)));
    };
    Triangles triangles;
    for(int j = 0; j < over; ++j)
    {
        for(int i = 0; i < around; ++i)
            add_quad(triangles, point(i, j), point(i + 1, j), point(i + 1, j + 1), point(i, j + 1));
    }
    return triangles;
}

/// Two squares that meet at the y axis with an angle between their planes.
Triangles fold(Real64 degrees)
{
    Real64 const angle = degrees * std::numbers::pi / 180;
    Real32 const x = static_cast<Real32>(std::cos(angle));
    Real32 const z = static_cast<Real32>(std::sin(angle));
    Triangles triangles;
    add_quad(triangles, {-1, 0, 0}, {0, 0, 0}, {0, 1, 0}, {-1, 1, 0});
    add_quad(triangles, {0, 0, 0}, {x, 0, z}, {x, 1, z}, {0, 1, 0});
    return triangles;
}

TEST(SharpEdgeFinder, ACubeHasTwelve)
{
    EXPECT_EQ(count_sharp(cube()), 12u);
    EXPECT_EQ(count_sharp(cube(Vec3f(1e6f, -1e6f, 1e6f))), 12u);
}

TEST(SharpEdgeFinder, ASmoothSphereHasNone)
{
    EXPECT_EQ(count_sharp(sphere(24, 12)), 0u);
    EXPECT_GT(count_sharp(sphere(24, 12), 5), 24u);
}

TEST(SharpEdgeFinder, APlaneHasItsBorders)
{
    Triangles quad;
    add_quad(quad, {0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {0, 1, 0});
    EXPECT_EQ(count_sharp(quad), 4u);
}

TEST(SharpEdgeFinder, TheAngleIsThatBetweenThePlanes)
{
    constexpr std::size_t Borders = 6;
    EXPECT_EQ(count_sharp(fold(29)), Borders);
    EXPECT_EQ(count_sharp(fold(-29)), Borders);
    EXPECT_EQ(count_sharp(fold(31)), Borders + 1);
    EXPECT_EQ(count_sharp(fold(-31)), Borders + 1);
    EXPECT_EQ(count_sharp(fold(90)), Borders + 1);
    EXPECT_EQ(count_sharp(fold(179)), Borders + 1); // the edge of a knife
}

TEST(SharpEdgeFinder, TheOrderOfTheCornersDoesNotCount)
{
    RandomNumbers random(7);
    for(int round = 0; round < 20; ++round)
    {
        Triangles shuffled = cube();
        for(auto &triangle : shuffled)
        {
            if(random.below(2) == 1)
                std::swap(triangle[0], triangle[1]);
        }
        for(std::size_t i = shuffled.size(); i > 1; --i)
            std::swap(shuffled[i - 1], shuffled[random.below(static_cast<UInt32>(i))]);
        EXPECT_EQ(count_sharp(shuffled), 12u);
    }
}

TEST(SharpEdgeFinder, FacesThatStandTwiceAreAsOne)
{
    Triangles both = cube();
    for(auto const &[a, b, c] : cube())
        both.push_back({a, c, b});
    EXPECT_EQ(count_sharp(both), 12u);
}

TEST(SharpEdgeFinder, BothZerosAreOneCoordinate)
{
    Triangles triangles = fold(0);
    for(std::size_t i = 2; i < triangles.size(); ++i)
    {
        for(Pnt3f &corner : triangles[i])
            corner = Pnt3f(corner[0] == 0 ? -0.f : corner[0], corner[1], -0.f);
    }
    EXPECT_EQ(count_sharp(triangles), 6u);
}

TEST(SharpEdgeFinder, WhatHasNoAreaOrIsNotFiniteIsPassedOver)
{
    Triangles triangles = cube();
    triangles.push_back({Pnt3f(0, 0, 0), Pnt3f(1, 0, 0), Pnt3f(0.5f, 0, 0)});
    triangles.push_back({Pnt3f(0, 0, 0), Pnt3f(1, 0, 0), Pnt3f(1, 0, 0)});
    triangles.push_back({Pnt3f(0, 0, 0), Pnt3f(1, 0, 0), Pnt3f(NAN, 0, 0)});
    triangles.push_back({Pnt3f(0, 0, 0), Pnt3f(0, INFINITY, 0), Pnt3f(5, 5, 5)});
    EXPECT_EQ(count_sharp(triangles), 12u);
    EXPECT_EQ(count_sharp({{Pnt3f(3e38f, 0, 0), Pnt3f(-3e38f, 0, 0), Pnt3f(0, 3e38f, 0)}}), 3u);
    EXPECT_EQ(count_sharp({}), 0u);
}

TEST(SharpEdgeFinder, GivesTheEndsInTheOrderInWhichTheyCame)
{
    SharpEdgeFinder finder(30);
    finder.add({0, 0, 0}, {2, 0, 0}, {0, 1, 0});
    std::vector<SharpEdgeFinder::Edge> const edges = finder.find();
    ASSERT_EQ(edges.size(), 3u);
    EXPECT_EQ(finder.countEdges(), 3u);
    EXPECT_EQ(edges[0].a, Pnt3f(0, 0, 0));
    EXPECT_EQ(edges[0].b, Pnt3f(2, 0, 0));
    EXPECT_EQ(edges[1].b, Pnt3f(0, 1, 0));
}
} // namespace
} // namespace OSG::Test
