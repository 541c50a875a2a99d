#include "OSGSelectionBounds.h"

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "MathPrinters.h"
#include "OSGConstSizeTransform.h"
#include "OSGSelectionSet.h"
#include "SceneBuilders.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// A triangle from (0, 0, 0) to (1, 1, 0).
NodePtr make_triangle_node()
{
    return make_node(
        make_geometry(one_primitive(TrianglesPrimitive, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}})));
}

void expect_box(BoxVolume const &box, Pnt3f const &min, Pnt3f const &max)
{
    ASSERT_FALSE(box.isEmpty());
    EXPECT_TRUE(box.getMin().equals(min, 1e-5f)) << testing::PrintToString(box.getMin());
    EXPECT_TRUE(box.getMax().equals(max, 1e-5f)) << testing::PrintToString(box.getMax());
}

/// The root of the scene and that of the tree that it shows stand below other nodes, which do not
/// count.
struct SelectionBounds : testing::Test
{
    NodePtr const triangle = make_triangle_node();
    NodePtr const shared = make_transform(translation(0, 0, 5), {make_triangle_node()});
    NodePtr const aboveShared = make_transform(translation(0, 0, 7777), {shared});
    NodePtr const visit = make_visit(shared);
    NodePtr const moved = make_transform(translation(10, 0, 0), {triangle});
    NodePtr const scaled = make_transform(scaling(2, 2, 2), {visit});
    NodePtr const root = make_transform(translation(0, 100, 0), {moved, scaled});
    NodePtr const above = make_transform(translation(1000, 0, 0), {root});
    SelectionSet set;
};

TEST_F(SelectionBounds, AreThoseOfTheNodesWhereTheyStand)
{
    set.add({{NodePath(triangle)}});
    expect_box(bounds_of(set, root), {10, 100, 0}, {11, 101, 0});
    expect_box(bounds_of(set, moved), {10, 0, 0}, {11, 1, 0});
    expect_box(bounds_of(set, triangle), {0, 0, 0}, {1, 1, 0});
    expect_box(bounds_of(set, above), {1010, 100, 0}, {1011, 101, 0});
}

TEST_F(SelectionBounds, FollowThePathIntoTreesThatAreShownElsewhere)
{
    NodePath const inner(shared->getChild(0), {visit});
    set.add({{inner}});
    expect_box(bounds_of(set, root), {0, 100, 10}, {2, 102, 10});
    set.replace({{NodePath(shared, {visit})}});
    expect_box(bounds_of(set, root), {0, 100, 10}, {2, 102, 10});
}

TEST_F(SelectionBounds, HoldAllThatIsSelected)
{
    set.add({{NodePath(triangle)}, {NodePath(visit)}});
    expect_box(bounds_of(set, root), {0, 100, 0}, {11, 102, 10});
    set.replace({{NodePath(root)}});
    expect_box(bounds_of(set, root), {0, 100, 0}, {11, 102, 10});
}

TEST_F(SelectionBounds, OfNothingThereAreNone)
{
    EXPECT_TRUE(bounds_of(set, root).isEmpty());
    set.add({{NodePath(make_group())}, {NodePath(shared)}});
    EXPECT_TRUE(bounds_of(set, root).isEmpty()); // elsewhere
    EXPECT_TRUE(bounds_of(set, nullptr).isEmpty());
    UnrecordedRefPtr<ConstSizeTransform> const endless(ConstSizeTransform::create());
    NodePtr const node = make_node(endless, {make_triangle_node()});
    root->addChild(node);
    set.replace({{NodePath(node)}});
    EXPECT_TRUE(bounds_of(set, root).isEmpty());
}
} // namespace
