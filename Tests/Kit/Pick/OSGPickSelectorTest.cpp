#include "OSGPickSelector.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "OSGSceneBounds.h"
#include "RandomNumbers.h"
#include "SceneBuilders.h"
#include "SlowPick.h"

namespace OSG::Test
{
namespace
{
using HitT = SelectionFunctor::HitT;
using Lasso = std::vector<Pnt2f>;
constexpr UInt32 AllKinds = SelectionFunctor::SelectTriangles | SelectionFunctor::SelectLines |
                            SelectionFunctor::SelectPoints;

/// A scene of single primitives, each a node below a transform, and where they lie.
struct Primitives
{
    NodePtr root;
    std::vector<NodePtr> nodes;
    std::vector<std::vector<Pnt3d>> corners; // in the root's space
};

struct Units
{
    Real32 scale;
    Real32 moved; // along each axis
};

Pnt3d image(Matrix const &m, Pnt3f const &p)
{
    Pnt3d result;
    for(UInt32 row = 0; row < 3; ++row)
        result[row] = Real64(m[0][row]) * p[0] + Real64(m[1][row]) * p[1] +
                      Real64(m[2][row]) * p[2] + m[3][row];
    return result;
}

// Turned and moved, without change of size.
Matrix random_place(RandomNumbers &random, Units const &units)
{
    Matrix matrix = rotation(random.vector(), random.real(0, 6));
    for(UInt32 axis = 0; axis < 3; ++axis)
        matrix[3][axis] = random.real(-3, 3) * units.scale + units.moved;
    return matrix;
}

Primitives random_primitives(RandomNumbers &random, UInt32 count, Units const &units)
{
    PrimitiveType const types[] = {PointsPrimitive, LinesPrimitive, TrianglesPrimitive};
    Primitives scene;
    Children below;
    for(UInt32 i = 0; i < count; ++i)
    {
        UInt32 const corners = random.below(4) == 0 ? 1 + random.below(2) : 3;
        Real32 const size = (random.below(5) == 0 ? 30.f : 2.f) * units.scale;
        std::vector<Pnt3f> points;
        for(UInt32 k = 0; k < corners; ++k)
            points.push_back(random.point(-size, size));
        Matrix const place = random_place(random, units);
        scene.nodes.push_back(make_node(make_geometry(one_primitive(types[corners - 1], points))));
        below.push_back(make_transform(place, {scene.nodes.back()}));
        scene.corners.emplace_back();
        for(Pnt3f const &point : points)
            scene.corners.back().push_back(image(place, point));
    }
    scene.root = make_group(below);
    return scene;
}

WindowView random_view(RandomNumbers &random, Units const &units)
{
    Real32 const away = random.below(4) == 0 ? 4.f : 25.f;
    WindowView view = {random.point(-away, away), random.point(-2, 2),    random.vector(),
                       random.real(20, 110),      50 + random.below(900), 50 + random.below(900)};
    for(UInt32 axis = 0; axis < 3; ++axis)
    {
        view.from[axis] = view.from[axis] * units.scale + units.moved;
        view.at[axis] = view.at[axis] * units.scale + units.moved;
    }
    if(random.below(2) == 0)
        view.orthographicHeight = random.real(1, 30) * units.scale;
    return view;
}

Lasso random_lasso(RandomNumbers &random, WindowView const &view)
{
    Real32 const width = static_cast<Real32>(view.width);
    Real32 const height = static_cast<Real32>(view.height);
    Lasso lasso;
    for(UInt32 corners = 3 + random.below(7); corners > 0; --corners)
        lasso.emplace_back(random.real(-0.2f, 1.2f) * width, random.real(-0.2f, 1.2f) * height);
    return lasso;
}

struct Found
{
    Real32 nearest = 0;
    Real32 farthest = 0;
};

// By node, with the distances of its hits.
std::map<Node *, Found> found_in(PickSelector &selector, PickRegion const &region)
{
    PickSettings settings;
    settings.kinds = AllKinds;
    settings.hits = SelectionFunctor::AllHits;
    std::map<Node *, Found> found;
    for(HitT const &hit : selector.select(region, settings))
    {
        auto const [entry, isNew] = found.try_emplace(hit.node, Found{hit.distance, hit.distance});
        entry->second.nearest = std::min(entry->second.nearest, hit.distance);
        entry->second.farthest = std::max(entry->second.farthest, hit.distance);
    }
    return found;
}

/// Compares picks with slow ones. What is within a hundredth of a pixel of the area's edge, or a
/// ten-thousandth of the depth of a plane, may go either way.
struct Comparison
{
    static constexpr Real64 NearEdge = 0.01;
    int hits = 0;
    int misses = 0;

    void compare(Primitives const &scene, WindowView const &view, Lasso const &lasso,
                 SectionPlanes const &sections, PickRegion const &region)
    {
        SceneBounds const bounds = bounds_of(scene.root);
        ViewDepths const depths = *pick_depths(view, bounds);
        SlowPick const slow(view, depths, lasso, sections);
        PickSelector selector(scene.root);
        auto const found = found_in(selector, region);
        for(std::size_t i = 0; i < scene.nodes.size(); ++i)
        {
            auto const wider = slow.inside(scene.corners[i], NearEdge);
            auto const narrower = slow.inside(scene.corners[i], -NearEdge);
            auto const entry = found.find(scene.nodes[i].get());
            bool const isHit = entry != found.end();
            ASSERT_TRUE(wider || !isHit) << "node " << i << " is hit";
            ASSERT_TRUE(!narrower || isHit) << "node " << i << " is not hit";
            if(!narrower || !isHit)
            {
                misses += wider ? 0 : 1;
                continue;
            }
            ++hits;
            // The near side of a small solid that begins close to the eye is slightly tilted by
            // the rounding of its corners.
            Real64 const slack = (region.isSolid() ? 1e-2 : 1e-3) * depths.farSide;
            Found const &at = entry->second;
            EXPECT_GE(at.nearest + depths.nearSide, wider->nearest - slack) << i;
            EXPECT_LE(at.nearest + depths.nearSide, narrower->nearest + slack) << i;
            EXPECT_GE(at.farthest + depths.nearSide, narrower->farthest - slack) << i;
            EXPECT_LE(at.farthest + depths.nearSide, wider->farthest + slack) << i;
        }
    }
};

// A kit for models in metres serves millimetres and kilometres as well.
Units const AllUnits[] = {{1, 0}, {1e-3f, 0}, {1e3f, 0}, {1e3f, 1e6f}};

TEST(PickSelector, FindsInALassoWhatClippingInTheWindowLeaves)
{
    Comparison comparison;
    for(Units const &units : AllUnits)
    {
        RandomNumbers random(140);
        for(int round = 0; round < 150 && !testing::Test::HasFatalFailure(); ++round)
        {
            SCOPED_TRACE(testing::Message() << "scale " << units.scale << " round " << round);
            Primitives const scene = random_primitives(random, 8, units);
            WindowView const view = random_view(random, units);
            Lasso const lasso = random_lasso(random, view);
            auto const region = PickRegion::ofLasso(view, lasso, bounds_of(scene.root));
            if(region)
                comparison.compare(scene, view, lasso, {}, *region);
        }
    }
    EXPECT_GT(comparison.hits, 700);
    EXPECT_GT(comparison.misses, 700);
}

TEST(PickSelector, FindsInARectangleWhatClippingInTheWindowLeaves)
{
    Comparison comparison;
    int solids = 0;
    RandomNumbers random(141);
    for(int round = 0; round < 150 && !testing::Test::HasFatalFailure(); ++round)
    {
        SCOPED_TRACE(round);
        Primitives const scene = random_primitives(random, 8, AllUnits[0]);
        WindowView view = random_view(random, AllUnits[0]);
        Lasso const two = random_lasso(random, view);
        PixelArea const area = pixel_rectangle(two[0][0], two[0][1], two[1][0], two[1][1]);
        Lasso const lasso = {{area.left, area.top},
                             {area.right, area.top},
                             {area.right, area.bottom},
                             {area.left, area.bottom}};
        auto const region = PickRegion::ofRectangle(view, area, bounds_of(scene.root));
        if(!region)
            continue;
        solids += region->isSolid() ? 1 : 0;
        comparison.compare(scene, view, lasso, {}, *region);
    }
    EXPECT_GT(solids, 50);
    EXPECT_GT(comparison.hits, 200);
    EXPECT_GT(comparison.misses, 200);
}

TEST(PickSelector, FindsNothingThatASectionCutsAway)
{
    Comparison comparison;
    for(Units const &units : AllUnits)
    {
        RandomNumbers random(142);
        for(int round = 0; round < 100 && !testing::Test::HasFatalFailure(); ++round)
        {
            SCOPED_TRACE(testing::Message() << "scale " << units.scale << " round " << round);
            Primitives const scene = random_primitives(random, 8, units);
            WindowView const view = random_view(random, units);
            Lasso const lasso = random_lasso(random, view);
            SectionPlanes sections;
            for(UInt32 i = random.below(7); i > 0; --i)
            {
                Pnt3f at = random.point(-5, 5);
                for(UInt32 axis = 0; axis < 3; ++axis)
                    at[axis] = at[axis] * units.scale + units.moved;
                sections.add(Plane(random.vector(), at));
            }
            auto region = PickRegion::ofLasso(view, lasso, bounds_of(scene.root));
            if(!region)
                continue;
            region->cut(sections);
            comparison.compare(scene, view, lasso, sections, *region);
        }
    }
    EXPECT_GT(comparison.hits, 300);
    EXPECT_GT(comparison.misses, 500);
}

TEST(PickSelector, EnclosedIsWhatHasAllItsVerticesInside)
{
    constexpr Real64 NearEdge = 0.01;
    int enclosed = 0;
    int others = 0;
    for(Units const &units : AllUnits)
    {
        RandomNumbers random(143);
        for(int round = 0; round < 150; ++round)
        {
            Primitives const scene = random_primitives(random, 8, units);
            WindowView const view = random_view(random, units);
            Lasso const lasso = random_lasso(random, view);
            SceneBounds const bounds = bounds_of(scene.root);
            auto const region = PickRegion::ofLasso(view, lasso, bounds);
            if(!region)
                continue;
            SlowPick const slow(view, *pick_depths(view, bounds), lasso);
            PickSelector selector(scene.root);
            PickSettings settings;
            settings.kinds = AllKinds;
            settings.enclosed = true;
            std::set<Node *> found;
            for(HitT const &hit : selector.select(*region, settings))
                found.insert(hit.node);
            for(std::size_t i = 0; i < scene.nodes.size(); ++i)
            {
                auto const inside = [&](Real64 wider)
                {
                    auto const &corners = scene.corners[i];
                    return std::all_of(corners.begin(), corners.end(),
                                       [&](Pnt3d const &corner)
                                       { return slow.inside({corner}, wider).has_value(); });
                };
                bool const isFound = found.contains(scene.nodes[i].get());
                ASSERT_TRUE(isFound || !inside(-NearEdge)) << round << ' ' << i;
                ASSERT_TRUE(!isFound || inside(NearEdge)) << round << ' ' << i;
                (isFound ? enclosed : others) += 1;
            }
        }
    }
    EXPECT_GT(enclosed, 200);
    EXPECT_GT(others, 1000);
}

// Looks along -z without perspective; ten pixels are a unit, and the origin is in the middle.
WindowView straight_view()
{
    WindowView view = {{0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 45, 200, 100};
    view.orthographicHeight = 10;
    return view;
}

NodePtr triangle_at(Pnt3f const &a, Pnt3f const &b, Pnt3f const &c)
{
    return make_node(make_geometry(one_primitive(TrianglesPrimitive, {a, b, c})));
}

std::deque<HitT> picked(Node *root, Lasso const &lasso, PickSettings const &settings = {},
                        SectionPlanes const &sections = {})
{
    auto region = PickRegion::ofLasso(straight_view(), lasso, bounds_of(root));
    if(!region)
        return {};
    region->cut(sections);
    PickSelector selector(root);
    return selector.select(*region, settings);
}

TEST(PickSelector, WhatLiesOnNoEdgeOfALassoIsInOrOut)
{
    // A notched area: any cut of it into convex parts passes through the tip of the notch.
    Lasso const notched = {{50, 20}, {100, 50}, {150, 20}, {150, 80}, {50, 80}};
    NodePtr const point =
        make_node(make_geometry(one_primitive(PointsPrimitive, {{0, -1, 0}, {0, -1, -1}})));
    NodePtr const sliver = triangle_at({0, 0, 0}, {0, -3, 0}, {1e-6f, -2, 0});
    NodePtr const inNotch = triangle_at({-1, 2, 0}, {1, 2, 0}, {0, 1, 0});
    NodePtr const root = make_group({point, sliver, inNotch});
    PickSettings settings;
    settings.kinds = AllKinds;
    std::set<Node *> found;
    for(HitT const &hit : picked(root, notched, settings))
        found.insert(hit.node);
    EXPECT_EQ(found, (std::set<Node *>{point, sliver}));
}

TEST(PickSelector, ALassoWithinOneTriangleHitsIt)
{
    NodePtr const root = make_group({triangle_at({-90, -90, 0}, {90, -90, 0}, {0, 90, 0})});
    std::deque<HitT> const hits = picked(root, {{99, 50}, {101, 50}, {100, 52}});
    ASSERT_EQ(hits.size(), 1u);
    EXPECT_TRUE(hits[0].hasPoint);
    EXPECT_LE(std::abs(hits[0].point[0]), 0.1001f);
}

TEST(PickSelector, ATriangleThatSpansAGapOfTheLassoIsEnclosed)
{
    NodePtr const root = make_group({triangle_at({-4, 2, 0}, {4, 2, 0}, {0, -3, 0})});
    Lasso const notched = {{50, 20},  {60, 20},  {100, 50}, {140, 20},
                           {150, 20}, {150, 90}, {50, 90}};
    PickSettings settings;
    settings.enclosed = true;
    EXPECT_EQ(picked(root, notched, settings).size(), 1u);
    Lasso const narrower = {{65, 20}, {100, 50}, {140, 20}, {150, 20}, {150, 90}, {50, 90}};
    EXPECT_EQ(picked(root, narrower).size(), 1u);
    EXPECT_EQ(picked(root, narrower, settings).size(), 0u);
}

TEST(PickSelector, ATriangleWhollyInALassoHasNoNearestPoint)
{
    NodePtr const root = make_group({triangle_at({0, 0, 0}, {1, 0, -1}, {0, 1, -2})});
    PickSettings settings;
    settings.hits = SelectionFunctor::AllHits;
    std::deque<HitT> const hits =
        picked(root, {{80, 20}, {130, 20}, {120, 70}, {80, 60}}, settings);
    ASSERT_EQ(hits.size(), 2u);
    EXPECT_FALSE(hits[0].hasPoint);
    EXPECT_TRUE(hits[1].hasPoint);
    EXPECT_EQ(hits[1].point, Pnt3f(0, 1, -2));
}

TEST(PickSelector, ASharedNodeMayBeEnclosedOnOnePathAlone)
{
    NodePtr const shared = triangle_at({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    NodePtr const here = make_visit(shared);
    NodePtr const there = make_transform(translation(4.5f, 0, 0), {make_visit(shared)});
    NodePtr const root = make_group({here, there});
    Lasso const lasso = {{90, 30}, {150, 30}, {150, 60}, {90, 60.5f}};
    PickSettings settings;
    EXPECT_EQ(picked(root, lasso, settings).size(), 1u); // one node
    settings.hits = SelectionFunctor::AllHits;
    std::size_t const all = picked(root, lasso, settings).size();
    settings.enclosed = true;
    std::deque<HitT> const enclosed = picked(root, lasso, settings);
    EXPECT_LT(enclosed.size(), all);
    for(HitT const &hit : enclosed)
        EXPECT_EQ(hit.visitSubTreeNodes, std::vector<Node *>{here});
    EXPECT_FALSE(enclosed.empty());
}

TEST(PickSelector, ABoxEnclosesWhatLiesOnItsSides)
{
    Pnt3f const corners[8] = {{0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1},
                              {0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    PickRegion const box{Frustum(corners)};
    NodePtr const inside = triangle_at({0, 0, 0}, {1, 0, 1}, {1, 1, 1});
    NodePtr const crossing = triangle_at({0, 0, 0}, {1, 0, 1}, {1, 1.000001f, 1});
    NodePtr const root = make_group({inside, crossing});
    bounds_of(root);
    PickSettings settings;
    PickSelector selector(root);
    EXPECT_EQ(selector.select(box, settings).size(), 2u);
    settings.enclosed = true;
    ASSERT_EQ(selector.select(box, settings).size(), 1u);
    EXPECT_EQ(selector.select(box, settings)[0].node, inside);
    settings.fast = true;
    ASSERT_EQ(selector.select(box, settings).size(), 1u);
    settings.fast = false;
    settings.kinds = SelectionFunctor::SelectLines;
    EXPECT_EQ(selector.select(box, settings).size(), 0u);
}

TEST(PickSelector, EnclosedLooksAtAllKindsWhateverIsAsked)
{
    GeometryParts parts = {{TrianglesPrimitive, LinesPrimitive},
                           {3, 2},
                           {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 0}, {5, 0, 0}}};
    NodePtr const root = make_group({make_node(make_geometry(parts))});
    Lasso const small = {{90, 30}, {150, 30}, {130, 60}, {90, 60}};
    Lasso const large = {{90, 30}, {160, 30}, {160, 60}, {90, 61}};
    PickSettings settings;
    EXPECT_EQ(picked(root, small, settings).size(), 1u);
    settings.enclosed = true;
    EXPECT_EQ(picked(root, small, settings).size(), 0u);
    EXPECT_EQ(picked(root, large, settings).size(), 1u);
    settings.kinds = SelectionFunctor::SelectPoints;
    EXPECT_EQ(picked(root, large, settings).size(), 0u); // without a hit nothing is enclosed
}

TEST(PickSelector, AVertexThatIsNotFiniteIsOutside)
{
    Real32 const infinite = std::numeric_limits<Real32>::infinity();
    GeometryParts parts = {{TrianglesPrimitive, PointsPrimitive},
                           {3, 1},
                           {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, infinite, 0}}};
    Pnt3f const corners[8] = {{-9, -9, 9},  {9, -9, 9},  {9, 9, 9},  {-9, 9, 9},
                              {-9, -9, -9}, {9, -9, -9}, {9, 9, -9}, {-9, 9, -9}};
    NodePtr const root = make_group({make_node(make_geometry(parts))});
    PickSelector selector(root);
    PickSettings settings;
    EXPECT_EQ(selector.select(PickRegion(Frustum(corners)), settings).size(), 1u);
    settings.enclosed = true;
    EXPECT_EQ(selector.select(PickRegion(Frustum(corners)), settings).size(), 0u);
}

TEST(PickSelector, WhatASectionCutsAwayDoesNotCountAsInside)
{
    NodePtr const root = make_group({triangle_at({-2, 0, 0}, {2, 0, 0}, {0, 2, 0})});
    Lasso const lasso = {{20, 10}, {180, 10}, {180, 90}, {20, 90}};
    SectionPlanes left;
    EXPECT_TRUE(left.add(Vec3f(-2, 0, 0), 3)); // x <= 1.5
    PickSettings settings;
    EXPECT_EQ(picked(root, lasso, settings, left).size(), 1u);
    settings.enclosed = true;
    EXPECT_EQ(picked(root, lasso, settings, left).size(), 0u);
    EXPECT_EQ(picked(root, lasso, settings).size(), 1u);
    SectionPlanes all;
    EXPECT_TRUE(all.add(Vec3f(0, 1, 0), -3)); // y >= 3
    EXPECT_EQ(picked(root, lasso, {}, all).size(), 0u);
}

TEST(SectionPlanes, PlanesWithoutANormalAndASeventhAreNotAdded)
{
    Real32 const nan = std::nanf("");
    SectionPlanes planes;
    EXPECT_FALSE(planes.add(Vec3f(0, 0, 0), 1));
    EXPECT_FALSE(planes.add(Vec3f(0, nan, 0), 1));
    EXPECT_FALSE(planes.add(Vec3f(0, 1, 0), nan));
    EXPECT_TRUE(planes.isEmpty());
    for(int i = 0; i < 6; ++i)
        EXPECT_TRUE(planes.add(Vec3f(0, 1, 0), 1));
    EXPECT_FALSE(planes.add(Vec3f(0, 1, 0), 1));
    EXPECT_EQ(planes.getPlanes().size(), 6u);
}

TEST(PickRegion, ThereIsNoneWithoutAViewOrAnArea)
{
    SceneBounds bounds;
    bounds.box = BoxVolume(Pnt3f(-1, -1, -1), Pnt3f(1, 1, 1));
    Lasso const triangle = {{1, 1}, {9, 1}, {1, 9}};
    EXPECT_TRUE(PickRegion::ofLasso(straight_view(), triangle, bounds));
    EXPECT_FALSE(PickRegion::ofLasso(straight_view(), {}, bounds));
    EXPECT_FALSE(PickRegion::ofLasso(straight_view(), {{1, 1}, {9, 9}}, bounds));
    EXPECT_FALSE(PickRegion::ofLasso(straight_view(), {{1, 1}, {9, 1}, {9, 1}, {1, 1}}, bounds));
    EXPECT_FALSE(PickRegion::ofLasso(straight_view(), triangle, SceneBounds()));
    WindowView noPixels = straight_view();
    noPixels.width = 0;
    EXPECT_FALSE(PickRegion::ofLasso(noPixels, triangle, bounds));
    EXPECT_FALSE(PickRegion::ofRectangle(noPixels, {1, 1, 9, 9}, bounds));
    WindowView behind = straight_view();
    behind.at = Pnt3f(0, 0, 20);
    EXPECT_FALSE(PickRegion::ofLasso(behind, triangle, bounds));
}

TEST(PickRegion, ARectangleGivenAsALassoIsTheRectangle)
{
    SceneBounds bounds;
    bounds.box = BoxVolume(Pnt3f(-1, -1, -1), Pnt3f(1, 1, 1));
    auto const wanted =
        PickRegion::ofRectangle(straight_view(), pixel_rectangle(90, 40, 110, 60), bounds);
    ASSERT_TRUE(wanted && wanted->isSolid());
    for(Lasso const &lasso : {Lasso{{90, 40}, {110, 40}, {110, 60}, {90, 60}},
                              Lasso{{110, 60}, {110, 40}, {90, 40}, {90, 60}},
                              Lasso{{100, 40}, {110, 40}, {110, 50}, {110, 60}, {90, 60}, {90, 40}},
                              Lasso{{90, 60}, {90, 60}, {90, 40}, {110, 40}, {110, 60}, {90, 60}}})
    {
        auto const region = PickRegion::ofLasso(straight_view(), lasso, bounds);
        ASSERT_TRUE(region);
        EXPECT_TRUE(region->isSolid());
        EXPECT_EQ(region->getSolid().nlb(), wanted->getSolid().nlb());
        EXPECT_EQ(region->getSolid().frt(), wanted->getSolid().frt());
    }
    auto const other =
        PickRegion::ofLasso(straight_view(), {{90, 40}, {110, 41}, {110, 60}, {90, 60}}, bounds);
    ASSERT_TRUE(other);
    EXPECT_FALSE(other->isSolid());
}
} // namespace
} // namespace OSG::Test
