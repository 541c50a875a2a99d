#include "OSGPickSelector.h"

#include <cmath>
#include <limits>
#include <set>

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "OSGAppearanceTable.h"
#include "OSGSceneBounds.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
using HitT = SelectionFunctor::HitT;
using Lasso = std::vector<Pnt2f>;
constexpr UInt32 AllKinds = SelectionFunctor::SelectTriangles | SelectionFunctor::SelectLines |
                            SelectionFunctor::SelectPoints;

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

TEST(PickSelector, WhatIsNotDrawnIsNotPicked)
{
    NodePtr const hidden = triangle_at({-1, -1, 0}, {1, -1, 0}, {0, 1, 0});
    NodePtr const shown = triangle_at({-1, -1, -1}, {1, -1, -1}, {0, 1, -1});
    NodePtr const outer = make_group({shown});
    NodePtr const first = make_visit(outer);
    NodePtr const second = make_visit(outer);
    NodePtr const root = make_group({make_group({hidden}), first, second});
    AppearanceTable table;
    PickSettings settings;
    settings.appearances = &table;
    settings.hits = SelectionFunctor::AllHits;
    Lasso const all = {{0, 0}, {200, 0}, {200, 100}, {1, 100}};
    auto const found = [&]
    {
        std::set<std::string> paths;
        for(HitT const &hit : picked(root, all, settings))
            paths.insert(node_path(root, hit.visitSubTreeNodes, hit.node));
        return paths;
    };
    using Paths = std::set<std::string>;
    EXPECT_EQ(found(), (Paths{"/0/0", "/1@/0", "/2@/0"}));
    table.hide(NodePath(root->getChild(0)));
    EXPECT_EQ(found(), (Paths{"/1@/0", "/2@/0"}));
    table.hide(NodePath(outer, {first}));
    EXPECT_EQ(found(), (Paths{"/2@/0"}));
    table.clear();
    table.isolate({NodePath(first)});
    EXPECT_EQ(found(), (Paths{"/1@/0"}));
    table.hide(NodePath(shown, {first}));
    EXPECT_EQ(found(), Paths());
}
} // namespace
} // namespace OSG::Test
