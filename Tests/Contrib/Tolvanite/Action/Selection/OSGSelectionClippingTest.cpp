#include "OSGSelectionClipping.h"

#include <cstring>
#include <limits>

#include <gmock/gmock.h>

#include "ClippingCases.h"
#include "MathPrinters.h"

namespace
{
using namespace OSG;
using namespace OSG::SelectionClipping;
using namespace OSG::Test;
using testing::ElementsAre;

Real32 const Nan = std::numeric_limits<Real32>::quiet_NaN();
/// z >= 0.
Plane const Above(Vec3f(0, 0, 1), Pnt3f());

// --- one segment, one plane ---

TEST(SegmentHalfSpaceIntersect, SegmentInThePlaneIsInside)
{
    Segment segment({0, 0, 0}, {1, 2, 0});
    EXPECT_EQ(segment_half_space_intersect(segment, Above), ClipInside);
    EXPECT_EQ(segment, Segment({0, 0, 0}, {1, 2, 0}));
}

TEST(SegmentHalfSpaceIntersect, ParallelSegmentIsKeptOrDroppedByItsSide)
{
    Segment over({0, 0, 1}, {1, 0, 1});
    Segment under({0, 0, -1}, {1, 0, -1});
    EXPECT_EQ(segment_half_space_intersect(over, Above), ClipInside);
    EXPECT_EQ(segment_half_space_intersect(under, Above), ClipOutside);
}

TEST(SegmentHalfSpaceIntersect, EnteringAtItsVeryFirstPointMovesItNowhere)
{
    Segment segment({1, 2, 0}, {1, 2, 5});
    EXPECT_EQ(segment_half_space_intersect(segment, Above), ClipFirstMoved);
    EXPECT_EQ(segment, Segment({1, 2, 0}, {1, 2, 5}));
}

TEST(SegmentHalfSpaceIntersect, LeavingAtItsVeryLastPointPutsThatOnThePlane)
{
    Segment segment({1, 2, 5}, {3, 2, 0});
    EXPECT_EQ(segment_half_space_intersect(segment, Above), ClipSecondMoved);
    EXPECT_EQ(segment, Segment({1, 2, 5}, {3, 2, 0}));
}

TEST(SegmentHalfSpaceIntersect, CrossingSegmentsAreCutAtThePlane)
{
    Segment entering({0, 0, -1}, {4, 0, 3});
    EXPECT_EQ(segment_half_space_intersect(entering, Above), ClipFirstMoved);
    EXPECT_EQ(entering, Segment({1, 0, 0}, {4, 0, 3}));
    Segment leaving({4, 0, 3}, {0, 0, -1});
    EXPECT_EQ(segment_half_space_intersect(leaving, Above), ClipSecondMoved);
    EXPECT_EQ(leaving, Segment({4, 0, 3}, {1, 0, 0}));
}

TEST(SegmentHalfSpaceIntersect, SegmentsThatDoNotReachThePlaneStay)
{
    struct Case
    {
        char const *name;
        Segment segment;
        ClipResult result;
    };
    Case const cases[] = {
        {"rising above", {{0, 0, 1}, {0, 0, 2}}, ClipInside},
        {"rising below", {{0, 0, -2}, {0, 0, -1}}, ClipOutside},
        {"sinking above", {{0, 0, 2}, {0, 0, 1}}, ClipInside},
        {"sinking below", {{0, 0, -1}, {0, 0, -2}}, ClipOutside},
        {"point above", {{0, 0, 1}, {0, 0, 1}}, ClipInside},
        {"point on the plane", {{0, 0, 0}, {0, 0, 0}}, ClipInside},
        {"point below", {{0, 0, -1}, {0, 0, -1}}, ClipOutside},
        {"within the tolerance", {{0, 0, -4e-7f}, {0, 0, 5e-7f}}, ClipOutside},
    };
    for(Case const &c : cases)
    {
        Segment segment = c.segment;
        EXPECT_EQ(segment_half_space_intersect(segment, Above), c.result) << c.name;
        EXPECT_EQ(segment, c.segment) << c.name;
    }
}

TEST(SegmentHalfSpaceIntersect, ParallelMeansBelowTheToleranceAndNotAtIt)
{
    Segment segment({0, 0, 0}, {0, 0, ParallelEpsilon});
    EXPECT_EQ(segment_half_space_intersect(segment, Above), ClipFirstMoved);
}

// --- coarse and containment tests ---

TEST(CoarseIntersect, FalseOnlyWhereOnePlaneHasAllPointsOutside)
{
    auto const box = box_planes();
    Pnt3f const out[] = {{2, 0, 0}, {2, 1, 0}, {3, 0, 0}};
    Pnt3f const crossing[] = {{2, 0, 0}, {0.5f, 0.5f, -0.5f}, {3, 0, 0}};
    EXPECT_FALSE(coarse_intersect(out, 3, box.data(), 6));
    EXPECT_TRUE(coarse_intersect(crossing, 3, box.data(), 6));
}

TEST(CoarseIntersect, WithoutPlanesTrueAndWithoutPointsFalse)
{
    auto const box = box_planes();
    Pnt3f const far[] = {{9, 9, 9}};
    EXPECT_TRUE(coarse_intersect(far, 1, box.data(), 0));
    EXPECT_TRUE(coarse_intersect(nullptr, 0, nullptr, 0));
    EXPECT_FALSE(coarse_intersect(nullptr, 0, box.data(), 6));
}

TEST(CoarseIntersect, TriangleBesideACornerPassesAndOnlyTheClipDropsIt)
{
    // Each half space holds one of its corners, but x + y stays above 2.2 all along.
    auto const box = box_planes();
    Pnt3f const triangle[] = {{0.9f, 1.4f, -0.5f}, {1.4f, 0.9f, -0.5f}, {1.4f, 1.4f, -0.5f}};
    EXPECT_TRUE(coarse_intersect(triangle, 3, box.data(), 6));
    SegmentList polygon = loop(triangle, 3);
    clip_polygon_at_polytop(polygon, box.data(), 6);
    EXPECT_TRUE(polygon.empty());
}

TEST(Containement, EveryPointMustBeInEveryHalfSpace)
{
    auto const box = box_planes();
    Pnt3f const inside[] = {{0, 0, 0}, {1, 1, -1}, {0.5f, 0.5f, -0.5f}};
    Pnt3f const one_out[] = {{0, 0, 0}, {1, 1, -1}, {0.5f, 0.5f, 0.5f}};
    EXPECT_TRUE(containement(inside, 3, box.data(), 6));
    EXPECT_FALSE(containement(one_out, 3, box.data(), 6));
    EXPECT_TRUE(containement(one_out, 0, box.data(), 6));
    EXPECT_TRUE(containement(one_out, 3, box.data(), 0));
}

// --- polygons ---

TEST(ClipPolygonAtPolytop, TriangleOutsideOnePlaneEmptiesTheList)
{
    Pnt3f const triangle[] = {{0, 0, -1}, {1, 0, -1}, {0, 1, -2}};
    SegmentList polygon = loop(triangle, 3);
    clip_polygon_at_polytop(polygon, &Above, 1);
    EXPECT_TRUE(polygon.empty());
}

TEST(ClipPolygonAtPolytop, OneCornerCutOffLeavesFourSegments)
{
    Pnt3f const triangle[] = {{0, 0, -1}, {2, 0, 1}, {-2, 0, 1}};
    SegmentList polygon = loop(triangle, 3);
    clip_polygon_at_polytop(polygon, &Above, 1);
    EXPECT_THAT(polygon,
                ElementsAre(Segment({-1, 0, 0}, {1, 0, 0}), Segment({1, 0, 0}, {2, 0, 1}),
                            Segment({2, 0, 1}, {-2, 0, 1}), Segment({-2, 0, 1}, {-1, 0, 0})));
}

TEST(ClipPolygonAtPolytop, TwoCornersCutOffLeaveThreeSegments)
{
    Pnt3f const triangle[] = {{0, 0, 1}, {2, 0, -1}, {-2, 0, -1}};
    SegmentList polygon = loop(triangle, 3);
    clip_polygon_at_polytop(polygon, &Above, 1);
    EXPECT_THAT(polygon, ElementsAre(Segment({0, 0, 1}, {1, 0, 0}), Segment({1, 0, 0}, {-1, 0, 0}),
                                     Segment({-1, 0, 0}, {0, 0, 1})));
}

TEST(ClipPolygonAtPolytop, CornerThatTouchesThePlaneGetsNoClosingSegment)
{
    Pnt3f const triangle[] = {{0, 0, 0}, {2, 0, 1}, {-2, 0, 1}};
    SegmentList polygon = loop(triangle, 3);
    clip_polygon_at_polytop(polygon, &Above, 1);
    EXPECT_THAT(polygon, ElementsAre(Segment({0, 0, 0}, {2, 0, 1}), Segment({2, 0, 1}, {-2, 0, 1}),
                                     Segment({-2, 0, 1}, {0, 0, 0})));
}

TEST(ClipPolygonAtPolytop, ClosingSegmentMustBeLongerThanTheTolerance)
{
    // The triangle is as wide as its corner is deep below the plane; 1e-6 each: left out.
    for(Real32 depth : {4e-7f, 1e-5f})
    {
        Pnt3f const triangle[] = {{0, 0, -depth}, {1, 0, 1}, {-1, 0, 1}};
        SegmentList polygon = loop(triangle, 3);
        clip_polygon_at_polytop(polygon, &Above, 1);
        EXPECT_EQ(polygon.size(), depth < 5e-7f ? 3u : 4u);
    }
}

TEST(ClipPolygonAtPolytop, ThirdCrossingAddsNothing)
{
    // A loop in the form of a W crosses four times; only the first pair is closed.
    Pnt3f const zigzag[] = {{0, 0, 1}, {1, 0, -1}, {2, 0, 1}, {3, 0, -1}, {4, 0, 1}, {2, 0, 5}};
    SegmentList polygon = loop(zigzag, 6);
    clip_polygon_at_polytop(polygon, &Above, 1);
    EXPECT_EQ(polygon.size(), 7u);
    int along = 0;
    for(Segment const &segment : polygon)
        along += segment.first[2] == 0.f && segment.second[2] == 0.f;
    EXPECT_EQ(along, 1);
}

TEST(ClipPolygonAtPolytop, LeavesWithoutEntriesAreNotClosed)
{
    SegmentList open{Segment({0, 0, 1}, {0, 0, -1}), Segment({5, 0, 1}, {5, 0, -1})};
    clip_polygon_at_polytop(open, &Above, 1);
    EXPECT_THAT(open, ElementsAre(Segment({0, 0, 1}, {0, 0, 0}), Segment({5, 0, 1}, {5, 0, 0})));
}

TEST(ClipPolygonAtPolytop, TriangleRoundTheWholePolytopeBecomesItsSection)
{
    auto const box = box_planes();
    Pnt3f const triangle[] = {{-10, -10, -0.5f}, {20, -10, -0.5f}, {-10, 20, -0.5f}};
    SegmentList polygon = loop(triangle, 3);
    clip_polygon_at_polytop(polygon, box.data(), 6);
    std::vector<Pnt3f> corners;
    for(Segment const &segment : polygon)
        corners.push_back(segment.first);
    EXPECT_NEAR(area(as_doubles(corners)), 1.0, 1e-5);
    EXPECT_EQ(corners.size(), 4u);
}

TEST(ClipPolygonAtPolytop, LeavesWhatAnIndependentClipperLeaves)
{
    RandomNumbers random(32);
    int kept = 0;
    for(int i = 0; i < 20000; ++i)
    {
        auto const planes = random_polytope(random);
        std::vector<Pnt3f> const corners = random_convex_polygon(random);
        SegmentList polygon = loop(corners.data(), static_cast<int>(corners.size()));
        clip_polygon_at_polytop(polygon, planes.data(), 6);
        DoublePolygon const expected = reference_clip(as_doubles(corners), planes);
        std::vector<Pnt3f> left;
        for(Segment const &segment : polygon)
            left.push_back(segment.first);
        double const expected_area = area(expected);
        ASSERT_NEAR(area(as_doubles(left)), expected_area, 1e-4 * (1 + expected_area))
            << "case " << i;
        ASSERT_LE(polygon.size(), corners.size() + 6);
        kept += !polygon.empty();
    }
    EXPECT_GT(kept, 4000);
    EXPECT_LT(kept, 19000);
}

TEST(ClipPolygonAtPolytop, LeavesAClosedLoopInsideThePolytope)
{
    RandomNumbers random(33);
    for(int i = 0; i < 20000; ++i)
    {
        auto const planes = random_polytope(random);
        std::vector<Pnt3f> const corners = random_convex_polygon(random);
        SegmentList polygon = loop(corners.data(), static_cast<int>(corners.size()));
        clip_polygon_at_polytop(polygon, planes.data(), 6);
        for(auto segment = polygon.begin(); segment != polygon.end(); ++segment)
        {
            auto next = std::next(segment);
            next = next == polygon.end() ? polygon.begin() : next;
            ASSERT_LT(segment->second.dist(next->first), 1e-5f) << "case " << i;
            for(Plane const &plane : planes)
                ASSERT_GT(plane.distance(segment->first), -1e-4f) << "case " << i;
        }
    }
}

TEST(ClipPolygonAtPolytop, TriangleWithAPointInsideIsNeverDropped)
{
    RandomNumbers random(34);
    int held = 0;
    for(int i = 0; i < 20000; ++i)
    {
        auto const planes = random_polytope(random);
        Pnt3f corners[3];
        random_triangle(random, corners);
        bool inside = false;
        for(int sample = 0; sample < 20 && !inside; ++sample)
        {
            Real32 const s = random.real(0, 1);
            Real32 const t = random.real(0, 1 - s);
            Pnt3f const p =
                corners[0] + (corners[1] - corners[0]) * s + (corners[2] - corners[0]) * t;
            inside = std::all_of(planes.begin(), planes.end(),
                                 [&p](Plane const &plane) { return plane.distance(p) > 1e-4f; });
        }
        SegmentList polygon = loop(corners, 3);
        clip_polygon_at_polytop(polygon, planes.data(), 6);
        ASSERT_FALSE(inside && polygon.empty()) << "case " << i;
        held += inside;
    }
    EXPECT_GT(held, 2000);
}

TEST(ClipPolygonAtPolytop, ExhaustedMemoryRaisesTheStandardFailure)
{
    Pnt3f const triangle[] = {{0, 0, -1}, {2, 0, 1}, {-2, 0, 1}};
    SegmentList polygon = loop(triangle, 3);
    bool raised = false;
    set_mem_limit(1);
    try
    {
        clip_polygon_at_polytop(polygon, &Above, 1);
    }
    catch(std::bad_alloc const &)
    {
        raised = true;
    }
    set_mem_limit(0);
    EXPECT_TRUE(raised);
}

// --- triangles without a list ---

/// Not-a-numbers of any form count as one: their sign is the processor's.
bool same_bits(Real32 a, Real32 b)
{
    return std::bit_cast<UInt32>(a) == std::bit_cast<UInt32>(b) || (std::isnan(a) && std::isnan(b));
}

bool same_bits(Pnt3f const &a, Pnt3f const &b)
{
    return same_bits(a[0], b[0]) && same_bits(a[1], b[1]) && same_bits(a[2], b[2]);
}

void expect_same_as_list(Pnt3f const *corners, std::array<Plane, 6> const &planes)
{
    SegmentList list = loop(corners, 3);
    clip_polygon_at_polytop(list, planes.data(), 6);
    ClippedTriangle clipped;
    clip_triangle_at_frustum(corners, planes.data(), clipped);
    ASSERT_EQ(static_cast<std::size_t>(clipped.size()), list.size());
    ASSERT_EQ(clipped.empty(), list.empty());
    int i = 0;
    for(Segment const &expected : list)
    {
        ASSERT_TRUE(same_bits(clipped[i].first, expected.first) &&
                    same_bits(clipped[i].second, expected.second));
        ++i;
    }
}

TEST(ClipTriangleAtFrustum, GivesTheBitsOfTheListForRandomTriangles)
{
    RandomNumbers random(35);
    for(int i = 0; i < 100000; ++i)
    {
        auto const planes = random_polytope(random);
        Pnt3f corners[3];
        random_triangle(random, corners);
        expect_same_as_list(corners, planes);
        ASSERT_FALSE(HasFatalFailure()) << "case " << i;
    }
}

TEST(ClipTriangleAtFrustum, GivesTheBitsOfTheListForCornersOnPlanesAndStrangeNumbers)
{
    Real32 const odd[] = {0.f,
                          -0.f,
                          0.5f,
                          1.f,
                          -1.f,
                          2.f,
                          1e-7f,
                          1e-4f,
                          1e-40f,
                          1e30f,
                          -1e30f,
                          Nan,
                          std::numeric_limits<Real32>::infinity()};
    RandomNumbers random(36);
    auto const box = box_planes();
    for(int i = 0; i < 200000; ++i)
    {
        UInt32 const kinds = i % 2 == 0 ? 6 : std::size(odd);
        Pnt3f corners[3];
        for(Pnt3f &corner : corners)
        {
            for(int axis = 0; axis < 3; ++axis)
                corner[axis] = odd[random.below(kinds)];
        }
        auto planes = box;
        if(i % 5 == 0) // planes that are no polytope at all
        {
            for(Plane &plane : planes)
                plane = Plane(random.vector(), random.point(-1, 1));
        }
        expect_same_as_list(corners, planes);
        ASSERT_FALSE(HasFatalFailure()) << "case " << i;
    }
}

TEST(ClipTriangleAtFrustum, ReservesNoMemory)
{
    auto const box = box_planes();
    Pnt3f const triangle[] = {{-10, -10, -0.5f}, {20, -10, -0.5f}, {-10, 20, -0.5f}};
    reset_mem_peak();
    UInt64 const before = get_mem_peak_bytes();
    ClippedTriangle clipped;
    for(int i = 0; i < 1000; ++i)
        clip_triangle_at_frustum(triangle, box.data(), clipped);
    EXPECT_EQ(clipped.size(), 4);
    EXPECT_EQ(get_mem_peak_bytes(), before);
}

// --- lines ---

TEST(LineIntersect, SegmentInsideKeepsBothEnds)
{
    auto const box = box_planes();
    Pnt3f segment[] = {{0.25f, 0.25f, -0.25f}, {0.75f, 0.5f, -0.75f}};
    EXPECT_TRUE(line_intersect(segment, box.data(), 6));
    EXPECT_THAT(segment, ElementsAre(Pnt3f(0.25f, 0.25f, -0.25f), Pnt3f(0.75f, 0.5f, -0.75f)));
}

TEST(LineIntersect, ParallelSegmentOutsideIsRefusedUnchanged)
{
    auto const box = box_planes();
    Pnt3f segment[] = {{-1, 0.5f, 3}, {2, 0.5f, 3}};
    EXPECT_FALSE(line_intersect(segment, box.data(), 6));
    EXPECT_THAT(segment, ElementsAre(Pnt3f(-1, 0.5f, 3), Pnt3f(2, 0.5f, 3)));
}

TEST(LineIntersect, SegmentThroughThePolytopeIsCutAtBothEnds)
{
    auto const box = box_planes();
    Pnt3f segment[] = {{-1, 0.5f, -0.5f}, {3, 0.5f, -0.5f}};
    EXPECT_TRUE(line_intersect(segment, box.data(), 6));
    EXPECT_THAT(segment, ElementsAre(Pnt3f(0, 0.5f, -0.5f), Pnt3f(1, 0.5f, -0.5f)));
}

TEST(LineIntersect, SegmentBesideThePolytopeIsRefusedUnchanged)
{
    auto const box = box_planes();
    Pnt3f segment[] = {{0.5f, 3, -0.5f}, {3, 0.5f, -0.5f}};
    EXPECT_FALSE(line_intersect(segment, box.data(), 6));
    EXPECT_THAT(segment, ElementsAre(Pnt3f(0.5f, 3, -0.5f), Pnt3f(3, 0.5f, -0.5f)));
}

TEST(LineIntersect, WithoutPlanesItIsTrueAndUnchanged)
{
    Pnt3f segment[] = {{0, 3, 0}, {3, 0, 0}};
    EXPECT_TRUE(line_intersect(segment, nullptr, 0));
    EXPECT_THAT(segment, ElementsAre(Pnt3f(0, 3, 0), Pnt3f(3, 0, 0)));
}

TEST(LineIntersect, SegmentBesideThePolytopeOnALineThroughItIsNotRefused)
{
    // The ends come where the line enters and leaves: only the coarse test tells that it misses.
    auto const box = box_planes();
    Pnt3f segment[] = {{2, 0.5f, -0.5f}, {4, 0.5f, -0.5f}};
    EXPECT_FALSE(coarse_intersect(segment, 2, box.data(), 6));
    EXPECT_TRUE(line_intersect(segment, box.data(), 6));
    EXPECT_THAT(segment, ElementsAre(Pnt3f(2, 0.5f, -0.5f), Pnt3f(1, 0.5f, -0.5f)));
}

TEST(LineIntersect, SegmentOfNoLengthIsKeptOrDroppedByItsPlace)
{
    auto const box = box_planes();
    Pnt3f inside[] = {{0.5f, 0.5f, -0.5f}, {0.5f, 0.5f, -0.5f}};
    Pnt3f outside[] = {{0.5f, 0.5f, 0.5f}, {0.5f, 0.5f, 0.5f}};
    EXPECT_TRUE(line_intersect(inside, box.data(), 6));
    EXPECT_FALSE(line_intersect(outside, box.data(), 6));
}

TEST(LineIntersect, CutsWhereAnIndependentClipperCuts)
{
    RandomNumbers random(37);
    int kept = 0;
    for(int i = 0; i < 50000; ++i)
    {
        auto const planes = random_polytope(random);
        Pnt3f const a = random.point(-2, 2);
        Pnt3f const b = random.point(-2, 2);
        Pnt3f segment[] = {a, b};
        bool const result = coarse_intersect(segment, 2, planes.data(), 6) &&
                            line_intersect(segment, planes.data(), 6);
        double from = 0, to = 1;
        reference_interval(a, b, planes, from, to);
        if(to - from < 1e-4)
            continue;
        ASSERT_TRUE(result) << "case " << i;
        Vec3f const direction = b - a;
        ASSERT_TRUE(segment[0].equals(a + direction * Real32(from), 1e-3f)) << "case " << i;
        ASSERT_TRUE(segment[1].equals(a + direction * Real32(to), 1e-3f)) << "case " << i;
        ++kept;
    }
    EXPECT_GT(kept, 5000);
}
} // namespace
