#include "OSGSceneBounds.h"

#include <limits>

#include <gmock/gmock.h>

#include "GeometryBuilders.h"
#include "MathPrinters.h"
#include "OSGConstSizeTransform.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{

constexpr Real32 Infinite = std::numeric_limits<Real32>::infinity();

NodePtr make_triangle(Pnt3f const &a, Pnt3f const &b, Pnt3f const &c)
{
    return make_node(make_geometry(one_primitive(TrianglesPrimitive, {a, b, c})));
}

NodePtr unit_triangle() { return make_triangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}); }

NodePtr make_marker(Matrix const &matrix, Children const &children = {})
{
    UnrecordedRefPtr<ConstSizeTransform> const core(ConstSizeTransform::create());
    core->setMatrix(matrix);
    return make_node(core, children);
}

void expect_box(SceneBounds const &bounds, Pnt3f const &min, Pnt3f const &max)
{
    ASSERT_FALSE(bounds.box.isEmpty());
    EXPECT_EQ(bounds.box.getMin(), min);
    EXPECT_EQ(bounds.box.getMax(), max);
}

TEST(SceneBounds, AFiniteSceneHasTheBoxOfItsRoot)
{
    NodePtr const root = make_transform(translation(5, 0, 0), {unit_triangle()});
    SceneBounds const bounds = bounds_of(root);
    expect_box(bounds, {5, 0, 0}, {6, 1, 0});
    EXPECT_FALSE(bounds.holdsInfinite);
    EXPECT_TRUE(bounds.infiniteOrigins.empty());
}

TEST(SceneBounds, WithoutGeometryThereIsNoBox)
{
    EXPECT_TRUE(bounds_of(nullptr).box.isEmpty());
    SceneBounds const bounds = bounds_of(make_group());
    EXPECT_TRUE(bounds.box.isEmpty());
    EXPECT_FALSE(bounds.holdsInfinite);
}

TEST(SceneBounds, WhatKeepsItsSizeOnTheScreenIsLeftOutAndItsOriginKept)
{
    NodePtr const far = make_triangle({100, 0, 0}, {101, 0, 0}, {100, 1, 0});
    NodePtr const root = make_group(
        {make_transform(translation(5, 0, 0), {unit_triangle()}),
         make_transform(translation(0, 2, 0), {make_marker(translation(0, 0, 3), {far})})});
    SceneBounds const bounds = bounds_of(root);
    expect_box(bounds, {5, 0, 0}, {6, 1, 0});
    EXPECT_TRUE(bounds.holdsInfinite);
    EXPECT_THAT(bounds.infiniteOrigins, testing::ElementsAre(Pnt3f(0, 2, 3)));
}

TEST(SceneBounds, WhereOnlyInfiniteVolumesAreLeftThereIsNoBox)
{
    SceneBounds const bounds = bounds_of(make_group({make_marker(Matrix(), {unit_triangle()})}));
    EXPECT_TRUE(bounds.box.isEmpty());
    EXPECT_TRUE(bounds.holdsInfinite);
}

TEST(SceneBounds, TreesThatAreShownElsewhereCountWhereTheyAreShown)
{
    NodePtr const shown = make_transform(translation(1, 0, 0), {unit_triangle()});
    NodePtr const root = make_group(
        {make_transform(translation(0, 7, 0), {make_visit(shown)}), make_marker(Matrix())});
    SceneBounds const bounds = bounds_of(root);
    expect_box(bounds, {1, 7, 0}, {2, 8, 0});
}

TEST(SceneBounds, ATreeThatShowsItselfHasTheBoxOfWhatItHoldsOnce)
{
    NodePtr const root = make_group({unit_triangle()});
    root->addChild(make_visit(root));
    SceneBounds const bounds = bounds_of(root);
    EXPECT_TRUE(bounds.holdsInfinite);
    expect_box(bounds, {0, 0, 0}, {1, 1, 0});
    root->subChild(1);
}

TEST(SceneBounds, PartsWithACornerThatIsNotFiniteAreLeftOut)
{
    NodePtr const root =
        make_group({make_triangle({0, 0, 0}, {Infinite, 0, 0}, {0, 9, 0}), unit_triangle(),
                    make_node(make_geometry(one_primitive(LinesPrimitive, {{0, 0, 0}, {0, 0, 2}}))),
                    make_node(make_geometry(
                        one_primitive(PointsPrimitive, {{-1, 0, 0}, {0, -Infinite, 0}})))});
    SceneBounds const bounds = bounds_of(root);
    expect_box(bounds, {-1, 0, 0}, {1, 1, 2});
    EXPECT_FALSE(bounds.holdsInfinite);
}
} // namespace
} // namespace OSG::Test
