#include "OSGSelectionSearch.h"

#include <limits>

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "OSGMemManager.h"
#include "ReferenceSelection.h"

namespace OSG::Test
{
namespace
{
using SelectionSearch::Extremes;
using testing::ElementsAre;

Real32 const Nan = std::numeric_limits<Real32>::quiet_NaN();
Real32 const Infinity = std::numeric_limits<Real32>::infinity();
std::string const OutOfRange =
    "Geometry without a name: an index is out of range, what it belongs to is passed over\n";

Extremes triangles_in_box(GeometryParts const &parts)
{
    PlaneArray const planes = box_planes();
    return SelectionSearch::find_triangles(*make_geometry(parts), planes.data(), planes[0]);
}
Extremes lines_in_box(GeometryParts const &parts)
{
    PlaneArray const planes = box_planes();
    return SelectionSearch::find_lines(*make_geometry(parts), planes.data(), planes[0]);
}
Extremes points_in_box(GeometryParts const &parts)
{
    PlaneArray const planes = box_planes();
    return SelectionSearch::find_points(*make_geometry(parts), planes.data(), planes[0]);
}

// --- what counts ---

TEST(SelectionSearch, NothingFoundHasNoIndex)
{
    Extremes const found = triangles_in_box(triangle({2, 2, 2}, {3, 2, 2}, {2, 3, 2}));
    EXPECT_EQ(found.near.index, -1);
    EXPECT_EQ(found.far.index, -1);
    EXPECT_EQ(found.near.distance, std::numeric_limits<Real32>::max());
    EXPECT_EQ(found.far.distance, std::numeric_limits<Real32>::min());
}

TEST(SelectionSearch, OfEqualDistancesTheLastTriangleCounts)
{
    GeometryParts parts = inner_triangle();
    parts.lengths = {6};
    parts.index = {0, 1, 2, 0, 1, 2};
    parts.normals = {{1, 0, 0}, {0, 1, 0}};
    parts.normalIndex = {0, 0, 0, 1, 1, 1};
    Extremes const found = triangles_in_box(parts);
    EXPECT_EQ(found.near.index, 1);
    EXPECT_EQ(found.far.index, 1);
    EXPECT_EQ(found.near.normal, Vec3f(0, 1, 0));
}

TEST(SelectionSearch, OfEqualDistancesTheLastCornerCounts)
{
    GeometryParts parts =
        triangle({0.25f, 0.25f, -0.5f}, {0.5f, 0.25f, -0.5f}, {0.25f, 0.5f, -0.5f});
    parts.normals = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    Extremes const found = triangles_in_box(parts);
    EXPECT_EQ(found.near.normal, Vec3f(0, 0, 1));
    EXPECT_EQ(found.far.point, Pnt3f(0.25f, 0.5f, -0.5f));
}

TEST(SelectionSearch, AContainedTriangleLeavesTheNearPointOfACrossingOneBeforeIt)
{
    GeometryParts parts = triangle({0.5f, 0.5f, -0.75f}, {5, 0.5f, -0.75f}, {0.5f, 5, -0.75f});
    for(Pnt3f const &corner : inner_triangle().positions)
        parts.positions.push_back(corner);
    parts.lengths = {6};
    Extremes const found = triangles_in_box(parts);
    EXPECT_EQ(found.near.index, 1);
    EXPECT_EQ(found.near.distance, 0.2f);
    EXPECT_EQ(found.near.point[2], -0.75f);
    EXPECT_EQ(found.far.index, 0);
}

TEST(SelectionSearch, WhatLiesOnTheReferencePlaneIsNeverFar)
{
    Extremes const found =
        triangles_in_box(triangle({0.25f, 0.25f, 0}, {0.5f, 0.25f, 0}, {0.25f, 0.5f, 0}));
    EXPECT_EQ(found.near.index, 0);
    EXPECT_EQ(found.near.distance, 0.f);
    EXPECT_EQ(found.far.index, -1);
}

TEST(SelectionSearch, ATriangleInAPlaneOfTheFrustumIsHit)
{
    Extremes const found = triangles_in_box(triangle({-5, -5, -1}, {5, -5, -1}, {0, 5, -1}));
    EXPECT_EQ(found.near.index, 0);
    EXPECT_EQ(found.far.distance, 1.f);
}

TEST(SelectionSearch, AnEdgeThroughACornerOfTheFrustumGivesNumbers)
{
    Extremes const found = triangles_in_box(triangle({-1, 1, 0}, {1, -1, 0}, {-1, -1, 0}));
    EXPECT_EQ(found.near.index, 0);
    EXPECT_TRUE(found.near.point.equals(Pnt3f(), 1e-6f));
}

// --- what is out of range ---

TEST(SelectionSearch, IndicesOutOfRangeAreLeftOutAndReportedOnce)
{
    LogCapture log;
    GeometryParts parts = inner_triangle();
    parts.lengths = {6};
    parts.index = {0, 1, 77, 0, 1, 2};
    GeometryPtr const geometry = make_geometry(parts);
    PlaneArray const planes = box_planes();
    for(int i = 0; i < 3; ++i)
        EXPECT_EQ(SelectionSearch::find_triangles(*geometry, planes.data(), planes[0]).near.index,
                  0);
    EXPECT_THAT(log.texts(), ElementsAre(OutOfRange));
}

TEST(SelectionSearch, PointsOfAWildLengthEndWhereThePositionsDo)
{
    LogCapture log;
    Extremes const found = points_in_box({{PointsPrimitive, PointsPrimitive},
                                          {4294967295u, 4294967295u},
                                          {{0.5f, 0.5f, -0.25f}, {0.5f, 0.5f, -0.5f}}});
    EXPECT_EQ(found.near.distance, 0.25f);
    EXPECT_EQ(found.far.distance, 0.5f);
    EXPECT_EQ(found.far.index, 0);
    EXPECT_THAT(log.texts(), ElementsAre(OutOfRange));
}

TEST(SelectionSearch, PointsWithoutAPositionAreNotTakenForTheOrigin)
{
    LogCapture log;
    Extremes const found =
        points_in_box({{PointsPrimitive}, {3}, {{0.5f, 0.5f, -0.5f}}, {}, {9, 0, 4294967295u}});
    EXPECT_EQ(found.near.distance, 0.5f);
    EXPECT_EQ(found.far.distance, 0.5f);
    EXPECT_THAT(log.texts(), ElementsAre(OutOfRange));
}

TEST(SelectionSearch, UnknownTypesAndGeometriesWithoutPositionsGiveNothing)
{
    LogCapture log;
    GeometryParts const shapes[] = {
        {{77}, {3}, inner_triangle().positions},
        {{TrianglesPrimitive, LinesPrimitive, PointsPrimitive}, {3, 3, 3}, {}},
        {{TrianglesPrimitive, LinesPrimitive, PointsPrimitive}, {}, inner_triangle().positions},
        {{}, {}, {}}};
    for(GeometryParts const &parts : shapes)
    {
        EXPECT_EQ(triangles_in_box(parts).near.index, -1);
        EXPECT_EQ(lines_in_box(parts).near.index, -1);
        EXPECT_EQ(points_in_box(parts).near.index, -1);
    }
}

TEST(SelectionSearch, AGeometryWithoutAnyPropertyGivesNothing)
{
    GeometryPtr const geometry(Geometry::create());
    PlaneArray const planes = box_planes();
    EXPECT_EQ(SelectionSearch::find_triangles(*geometry, planes.data(), planes[0]).near.index, -1);
    EXPECT_EQ(SelectionSearch::find_lines(*geometry, planes.data(), planes[0]).near.index, -1);
    EXPECT_EQ(SelectionSearch::find_points(*geometry, planes.data(), planes[0]).near.index, -1);
    EXPECT_FALSE(SelectionSearch::has_triangle(*geometry, planes.data()));
}

// --- NaN, and numbers that are too large, too small or too close ---

void expect_numbers(Extremes const &found)
{
    for(SelectionSearch::Extreme const &extreme : {found.near, found.far})
    {
        if(extreme.index < 0)
            continue;
        EXPECT_EQ(extreme.distance, extreme.distance);
        EXPECT_EQ(extreme.point, extreme.point);
        EXPECT_EQ(extreme.normal, extreme.normal);
    }
}

TEST(SelectionSearch, CornersThatAreNoNumbersNeverGetIn)
{
    Pnt3f const good[3] = {{0.25f, 0.25f, -0.25f}, {0.5f, 0.25f, -0.5f}, {9, 0.5f, -0.75f}};
    for(Real32 bad : {Nan, Infinity, -Infinity})
    {
        for(std::size_t place = 0; place < 9; ++place)
        {
            std::vector<Pnt3f> corners(good, good + 3);
            corners[place / 3][place % 3] = bad;
            SCOPED_TRACE(testing::Message() << bad << " at " << place);
            expect_numbers(triangles_in_box(one_primitive(TrianglesPrimitive, corners)));
            expect_numbers(lines_in_box(one_primitive(LineLoopPrimitive, corners)));
            expect_numbers(points_in_box(one_primitive(PointsPrimitive, corners)));
        }
    }
}

TEST(SelectionSearch, WhatHasNoExtentGivesFiniteNormals)
{
    Pnt3f const in(0.5f, 0.5f, -0.5f);
    std::vector<std::vector<Pnt3f>> const shapes = {
        {in, in, in},
        {in, in, {0.75f, 0.5f, -0.5f}},
        {{-1, 0.5f, -0.5f}, {2, 0.5f, -0.5f}, {-1, 0.5f, -0.5f}},
        {{-1, 0.5f, -0.5f}, {0.5f, 0.5f, -0.5f}, {2, 0.5f, -0.5f}},
        {{1, 1, -1}, {1, 1, -1}, {1, 1, -1}}};
    for(std::vector<Pnt3f> const &corners : shapes)
    {
        Extremes const found = triangles_in_box(one_primitive(TrianglesPrimitive, corners));
        EXPECT_EQ(found.near.index, 0);
        EXPECT_EQ(found.near.normal, Vec3f());
        expect_numbers(found);
        expect_numbers(lines_in_box(one_primitive(LineLoopPrimitive, corners)));
    }
}

TEST(SelectionSearch, ALineWithoutLengthInsideIsAPlace)
{
    Pnt3f const in(0.5f, 0.5f, -0.5f);
    EXPECT_EQ(lines_in_box(one_primitive(LinesPrimitive, {in, in})).near.point, in);
}

TEST(SelectionSearch, VeryLargeAndVerySmallCoordinatesGiveNumbers)
{
    for(Real32 size : {1e30f, 1e-40f, 1e18f, 1e-20f})
    {
        SCOPED_TRACE(size);
        std::vector<Pnt3f> const around = {
            {-size, -size, -0.5f}, {size, -size, -0.5f}, {0, size, -0.5f}};
        std::vector<Pnt3f> const deep = {
            {0.5f, 0.5f, -size}, {size, 0.5f, size}, {-size, size, 0.5f}};
        for(std::vector<Pnt3f> const &corners : {around, deep})
        {
            expect_numbers(triangles_in_box(one_primitive(TrianglesPrimitive, corners)));
            expect_numbers(lines_in_box(one_primitive(LineLoopPrimitive, corners)));
            expect_numbers(points_in_box(one_primitive(PointsPrimitive, corners)));
        }
    }
}

// --- against the slow way ---

GeometryParts random_parts(RandomNumbers &random)
{
    GeometryParts parts;
    for(UInt32 i = random.below(5); i > 0; --i)
    {
        parts.types.push_back(random.below(10));
        parts.lengths.push_back(random.below(10));
    }
    Real32 const size = random.real(0.1f, 3.f);
    // Some coordinates lie exactly on planes, some corners coincide.
    for(UInt32 i = 1 + random.below(20); i > 0; --i)
    {
        Pnt3f point = random.point(-size, size);
        if(random.below(4) == 0)
            point[random.below(3)] = static_cast<Real32>(random.below(3)) - 1.f;
        parts.positions.push_back(point);
    }
    for(UInt32 i = random.below(10); i > 0; --i)
        parts.normals.push_back(random.below(4) == 0 ? Vec3f() : random.vector());
    if(random.below(2) == 0)
    {
        for(int i = 0; i < 40; ++i)
            parts.index.push_back(random.below(21));
    }
    if(random.below(2) == 0)
    {
        for(int i = 0; i < 40; ++i)
            parts.normalIndex.push_back(random.below(10));
    }
    return parts;
}

void expect_same(Extremes const &found, ReferenceExtremes const &expected)
{
    ASSERT_EQ(found.near.index, expected.nearIndex);
    ASSERT_EQ(found.near.distance, expected.nearDistance);
    ASSERT_EQ(found.near.point, expected.nearPoint);
    ASSERT_EQ(found.near.normal, expected.nearNormal);
    ASSERT_EQ(found.far.index, expected.farIndex);
    ASSERT_EQ(found.far.distance, expected.farDistance);
    ASSERT_EQ(found.far.point, expected.farPoint);
    ASSERT_EQ(found.far.normal, expected.farNormal);
}

/// So many triangles that the table of positions is used. Many triangles share positions.
GeometryParts large_parts(RandomNumbers &random)
{
    GeometryParts parts{{PolygonPrimitive, TriangleStripPrimitive}, {3, 4000}, {}};
    for(int i = 0; i < 900; ++i)
        parts.positions.push_back(random.point(-3, 3));
    for(int i = 0; i < 4003; ++i)
        parts.index.push_back(random.below(901)); // 900 is out of range
    parts.positions[random.below(900)][0] = Nan;
    return parts;
}

TEST(SelectionSearch, EqualsTheSlowSearchBitForBitOnLargeGeometries)
{
    LogCapture log;
    RandomNumbers random(92);
    for(int round = 0; round < 60 && !testing::Test::HasFatalFailure(); ++round)
    {
        SCOPED_TRACE(round);
        GeometryParts const parts = large_parts(random);
        GeometryPtr const geometry = make_geometry(parts);
        PlaneArray const planes = random_polytope(random);
        Plane const &plane = planes[random.below(6)];
        expect_same(SelectionSearch::find_triangles(*geometry, planes.data(), plane),
                    reference_triangles(parts, planes, plane));
        ASSERT_EQ(SelectionSearch::has_triangle(*geometry, planes.data()),
                  reference_has_triangle(parts, planes));
    }
}

TEST(SelectionSearch, WithoutMemoryLargeGeometriesGiveTheSame)
{
    RandomNumbers random(93);
    LogCapture log;
    GeometryParts const parts = large_parts(random);
    GeometryPtr const geometry = make_geometry(parts);
    PlaneArray const planes = box_planes();
    Extremes const expected = SelectionSearch::find_triangles(*geometry, planes.data(), planes[0]);
    set_mem_limit(1);
    Extremes const found = SelectionSearch::find_triangles(*geometry, planes.data(), planes[0]);
    set_mem_limit(0);
    EXPECT_GE(expected.near.index, 0);
    EXPECT_EQ(found.near.index, expected.near.index);
    EXPECT_EQ(found.far.point, expected.far.point);
}

TEST(SelectionSearch, EqualsTheSlowSearchBitForBitOnRandomGeometries)
{
    LogCapture log;
    RandomNumbers random(91);
    int hits = 0;
    for(int round = 0; round < 20000 && !testing::Test::HasFatalFailure(); ++round)
    {
        SCOPED_TRACE(round);
        GeometryParts const parts = random_parts(random);
        GeometryPtr const geometry = make_geometry(parts);
        PlaneArray const planes = round % 2 == 0 ? box_planes() : random_polytope(random);
        Plane const &plane = planes[random.below(6)];
        Extremes const found = SelectionSearch::find_triangles(*geometry, planes.data(), plane);
        hits += found.near.index >= 0;
        expect_same(found, reference_triangles(parts, planes, plane));
        expect_same(SelectionSearch::find_lines(*geometry, planes.data(), plane),
                    reference_lines(parts, planes, plane));
        expect_same(SelectionSearch::find_points(*geometry, planes.data(), plane),
                    reference_points(parts, planes, plane));
        ASSERT_EQ(SelectionSearch::has_triangle(*geometry, planes.data()),
                  reference_has_triangle(parts, planes));
    }
    EXPECT_GT(hits, 2000);
}
} // namespace
} // namespace OSG::Test
