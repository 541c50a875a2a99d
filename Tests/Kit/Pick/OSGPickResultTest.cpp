#include "OSGPickResult.h"

#include <cmath>

#include <gmock/gmock.h>

#include "GeometryBuilders.h"
#include "MathPrinters.h"
#include "OSGGeoToEntityAttachment.h"
#include "OSGName.h"
#include "OSGSceneBounds.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
// Looks along -z at the origin from a distance of 10.
WindowView straight_view() { return {{0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 45, 200, 100}; }

// Upright, of size 2, around (0, 0, z).
NodePtr triangle_at(Real32 z, char const *name = nullptr)
{
    NodePtr const node = make_node(
        make_geometry(one_primitive(TrianglesPrimitive, {{-1, -1, z}, {1, -1, z}, {0, 1, z}})));
    setName(node, name);
    return node;
}

std::vector<PickResult> results_at(Node *root, PixelArea const &area, PickSettings const &settings = {})
{
    auto const region = PickRegion::ofRectangle(straight_view(), area, bounds_of(root));
    if(!region)
        return {};
    PickSelector selector(root);
    return pick_results(selector, *region, settings);
}

std::vector<PickResult> results_in_middle(Node *root, PickSettings const &settings = {})
{
    return results_at(root, pixel_square(100, 50, 1), settings);
}

std::vector<std::string> names_of(std::vector<PickResult> const &results)
{
    std::vector<std::string> names;
    for(PickResult const &result : results)
        names.push_back(result.name);
    return names;
}

TEST(PickResults, ComeInTheOrderOfTheirDepths)
{
    NodePtr const root = make_group({triangle_at(0, "middle"), triangle_at(-2, "back"),
                                     make_transform(scaling(5, 5, 5), {triangle_at(0.6f, "front")})});
    EXPECT_THAT(names_of(results_in_middle(root)), testing::ElementsAre("front", "middle", "back"));
}

TEST(PickResults, SayWhereWhatAndWhose)
{
    NodePtr const shape = triangle_at(0, "shape");
    UnrecordedRefPtr<GeoToEntityAttachment> const entities(GeoToEntityAttachment::create());
    entities->editGeo().push_back(1);
    entities->editEnt().push_back(4711);
    shape->getCore()->addAttachment(entities);
    Matrix const place = translation(0, 0, 1);
    NodePtr const root = make_group({make_transform(place, {shape})});
    std::vector<PickResult> const results = results_in_middle(root);
    ASSERT_EQ(results.size(), 1u);
    PickResult const &result = results[0];
    EXPECT_EQ(result.path, NodePath(shape));
    EXPECT_EQ(result.getNode(), shape);
    EXPECT_EQ(result.name, "shape");
    EXPECT_EQ(result.entity, 4711u);
    EXPECT_EQ(result.primitive, 0);
    EXPECT_EQ(result.kind, SelectionFunctor::SelectTriangles);
    EXPECT_NEAR(result.point[2], 1, 1e-4);
    EXPECT_EQ(result.normal, Vec3f(0, 0, 1));
    ASSERT_TRUE(result.eyeDistance);
    EXPECT_NEAR(*result.eyeDistance, 9, 0.02);
}

TEST(PickResults, ATriangleWhollyInsideHasItsForemostCorner)
{
    NodePtr const root = make_group({make_node(make_geometry(
        one_primitive(TrianglesPrimitive, {{0, 0, -1}, {0.1f, 0, 0.5f}, {0, 0.1f, 0}})))});
    std::vector<PickResult> const results = results_at(root, {0, 0, 200, 100});
    ASSERT_EQ(results.size(), 1u);
    EXPECT_EQ(results[0].point, Pnt3f(0.1f, 0, 0.5f));
}

TEST(PickResults, NormalsStayPerpendicularUnderUnevenScales)
{
    NodePtr const slope = make_node(
        make_geometry(one_primitive(TrianglesPrimitive, {{-9, 0, 9}, {9, 0, 9}, {0, 9, 0}})));
    NodePtr const root = make_group({make_transform(scaling(1, 0.5f, 0.25f), {slope})});
    std::vector<PickResult> const results = results_in_middle(root);
    ASSERT_EQ(results.size(), 1u);
    // The slope rises by 4.5 over a depth of 2.25.
    EXPECT_NEAR(results[0].normal[1], 2.25 / std::hypot(4.5, 2.25), 1e-6);
    EXPECT_NEAR(results[0].normal[2], 4.5 / std::hypot(4.5, 2.25), 1e-6);
}

TEST(PickResults, ASharedNodeHasOneForEachPath)
{
    NodePtr const shared = triangle_at(0, "shared");
    NodePtr const near = make_visit(shared);
    NodePtr const far = make_visit(shared);
    NodePtr const root = make_group({make_transform(translation(0, 0, -3), {far}), near});
    std::vector<PickResult> const results = results_in_middle(root);
    ASSERT_EQ(results.size(), 2u);
    EXPECT_EQ(results[0].path, NodePath(shared, {near}));
    EXPECT_EQ(results[1].path, NodePath(shared, {far}));
}

TEST(PickResults, TellTheKindOfWhatIsForemost)
{
    GeometryParts const parts = {{TrianglesPrimitive, LinesPrimitive},
                                 {3, 2},
                                 {{-1, -1, 0}, {1, -1, 0}, {0, 1, 0}, {-1, 0, 2}, {1, 0, 2}}};
    NodePtr const root = make_group({make_node(make_geometry(parts))});
    PickSettings settings;
    settings.kinds = SelectionFunctor::SelectTriangles | SelectionFunctor::SelectLines;
    std::vector<PickResult> const both = results_in_middle(root, settings);
    ASSERT_EQ(both.size(), 1u);
    EXPECT_EQ(both[0].kind, SelectionFunctor::SelectLines);
    EXPECT_EQ(results_in_middle(root)[0].kind, SelectionFunctor::SelectTriangles);
}

TEST(PickCycle, StepsThroughAllAndBeginsAgain)
{
    NodePtr const root =
        make_group({triangle_at(0, "a"), triangle_at(-1, "b"), triangle_at(-2, "c")});
    PickCycle cycle(results_in_middle(root));
    ASSERT_FALSE(cycle.isEmpty());
    EXPECT_EQ(cycle.current()->name, "a");
    EXPECT_EQ(cycle.next()->name, "b");
    EXPECT_EQ(cycle.next()->name, "c");
    EXPECT_EQ(cycle.next()->name, "a");
    EXPECT_EQ(cycle.previous()->name, "c");
    EXPECT_EQ(cycle.previous()->name, "b");
    EXPECT_EQ(cycle.current()->name, "b");
}

TEST(PickCycle, OfNothingHasNoCurrentResult)
{
    PickCycle cycle;
    EXPECT_TRUE(cycle.isEmpty());
    EXPECT_EQ(cycle.current(), nullptr);
    EXPECT_EQ(cycle.next(), nullptr);
    EXPECT_EQ(cycle.previous(), nullptr);
    EXPECT_TRUE(results_at(make_group(), {0, 0, 200, 100}).empty());
}
} // namespace
} // namespace OSG::Test
