// Situations in which selections are known to go wrong. Each is asked of both functors, and three
// times, because walks keep what helps the later ones.

#include <gmock/gmock.h>

#include "OSGFastSelectionFunctor.h"
#include "SelectionScenes.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SelectionCases : public testing::TestWithParam<bool>
{
  protected:
    /// The nodes that are hit, nearest first where the exact functor is asked.
    std::vector<Node *> select(Node *root, UInt32 types = SelectionFunctor::SelectTriangles)
    {
        root->updateVolume();
        ActionPtr const action(SelectionAction::create(box_frustum()));
        action->setUsePrimitiveIndex(GetParam());
        SimpleSelectionFunctor exact(action, types, SelectionFunctor::NearPlane);
        action->apply(root);
        action->apply(root);
        action->apply(root);
        std::vector<Node *> const found = nodes(exact.hits(SelectionFunctor::FrontHits));
        back = nodes(exact.hits(SelectionFunctor::BackHits));
        FastSelectionFunctor fast(action);
        action->apply(root);
        fastFound = nodes(fast.hits(SelectionFunctor::FrontHits));
        return found;
    }

    std::vector<Node *> back;
    std::vector<Node *> fastFound;
};

TEST_P(SelectionCases, AVolumeWhollyInsideOneLargeTriangleFindsIt)
{
    NodePtr const shape =
        make_node(make_geometry(triangle({-50, -40, -0.5f}, {60, -40, -0.5f}, {0, 90, -0.5f})));
    EXPECT_THAT(select(shape), ElementsAre(shape.get()));
    EXPECT_THAT(fastFound, ElementsAre(shape.get()));
}

TEST_P(SelectionCases, ABandThatMissesTheCentreOfANodeFindsIt)
{
    // Its box is around (10, 10, -10); only a corner of it reaches into the volume.
    NodePtr const shape =
        make_node(make_geometry(triangle({0.9f, 0.9f, -0.9f}, {20, 19, -20}, {19, 20, -20})));
    EXPECT_THAT(select(shape), ElementsAre(shape.get()));
    EXPECT_THAT(fastFound, ElementsAre(shape.get()));
}

TEST_P(SelectionCases, AGeometryUnderSeveralNodesGivesEachAHitOfItsOwn)
{
    GeometryPtr const shared = make_geometry(inner_triangle());
    Children shapes;
    for(int i = 0; i < 12; ++i)
        shapes.push_back(make_node(shared));
    NodePtr const root = make_group(shapes);
    EXPECT_THAT(select(root), SizeIs(12));
    EXPECT_THAT(back, SizeIs(12));
    EXPECT_THAT(fastFound, SizeIs(12));
}

TEST_P(SelectionCases, SharedGeometriesAreOrderedByDepth)
{
    GeometryPtr const shared = make_geometry(triangle({0, 0, 0}, {0.1f, 0, 0}, {0, 0.1f, -0.01f}));
    Children places;
    std::vector<Node *> byDepth(10);
    for(std::size_t i = 0; i < 10; ++i)
    {
        std::size_t const depth = i * 7 % 10;
        NodePtr const shape = make_node(shared);
        byDepth[depth] = shape;
        places.push_back(make_transform(
            translation(0.4f, 0.4f, -0.05f - 0.09f * static_cast<Real32>(depth)), {shape}));
    }
    NodePtr const root = make_group(places);
    EXPECT_EQ(select(root), byDepth);
    EXPECT_EQ(back, std::vector<Node *>(byDepth.rbegin(), byDepth.rend()));
}

TEST_P(SelectionCases, LinesThroughTheVolumeWithBothEndsOutsideAreFound)
{
    NodePtr const through = make_node(
        make_geometry(one_primitive(LinesPrimitive, {{-5, 0.5f, -0.5f}, {5, 0.4f, -0.6f}})));
    NodePtr const past = make_node(
        make_geometry(one_primitive(LinesPrimitive, {{-1, 0.5f, -0.5f}, {0.5f, 3, -0.5f}})));
    NodePtr const root = make_group({past, through});
    EXPECT_THAT(select(root, SelectionFunctor::SelectLines), ElementsAre(through.get()));
    EXPECT_THAT(fastFound, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutAnIndexOfPrimitives, SelectionCases, testing::Bool());
} // namespace
} // namespace OSG::Test
