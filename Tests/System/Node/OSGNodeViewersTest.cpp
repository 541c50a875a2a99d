/// \file
/// Trees that are shown elsewhere tell those who show them.

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "LogCapture.h"
#include "OSGChangeList.h"
#include "OSGThread.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
void commit() { Thread::getCurrentChangeList()->commitChanges(); }

NodePtr make_triangle(Real32 x)
{
    return make_node(make_geometry(
        one_primitive(PrimitiveType(4), {Pnt3f(x, 0, 0), Pnt3f(x + 1, 0, 0), Pnt3f(x, 1, 0)})));
}

BoxVolume updated(Node *node)
{
    commit();
    node->updateVolume();
    return node->getVolume();
}

VisitSubTree &visit_of(Node *node) { return dynamic_cast<VisitSubTree &>(*node->getCore()); }
} // namespace

TEST(NodeViewers, AnEditBelowAShownTreeReachesThoseWhoShowIt)
{
    NodePtr const inner = make_group();
    NodePtr const shown = make_group({inner});
    NodePtr const root = make_group({make_group({make_visit(shown)})});
    inner->addChild(make_triangle(0));
    EXPECT_EQ(updated(root).getMax(), Pnt3f(1, 1, 0));
    inner->addChild(make_triangle(8));
    EXPECT_FALSE(root->getVolume().isValid());
    EXPECT_EQ(updated(root).getMax(), Pnt3f(9, 1, 0));
}

TEST(NodeViewers, AMovedTransformReachesThemAtItsCommit)
{
    NodePtr const shown = make_transform(translation(0, 0, 0), {make_triangle(0)});
    NodePtr const root = make_group({make_visit(shown)});
    updated(root);
    dynamic_cast<Transform &>(*shown->getCore()).setMatrix(translation(5, 0, 0));
    EXPECT_EQ(updated(root).getMin(), Pnt3f(5, 0, 0));
}

TEST(NodeViewers, EveryNodeOfASharedCoreAndEveryLevelOfVisitsIsReached)
{
    NodePtr const shown = make_group({make_triangle(0)});
    NodePtr const first = make_visit(shown);
    NodePtr const second = make_node(first->getCore());
    NodePtr const middle = make_group({first});
    NodePtr const top = make_group({make_visit(middle), second});
    updated(top);
    shown->addChild(make_triangle(3));
    EXPECT_FALSE(first->getVolume().isValid());
    EXPECT_FALSE(second->getVolume().isValid());
    EXPECT_FALSE(middle->getVolume().isValid());
    EXPECT_FALSE(top->getVolume().isValid());
    EXPECT_EQ(updated(top).getMax(), Pnt3f(4, 1, 0));
}

TEST(NodeViewers, OneWhoShowsAnotherTreeNowIsLeftAlone)
{
    NodePtr const shown = make_group({make_triangle(0)});
    NodePtr const visit = make_visit(shown);
    updated(visit);
    visit_of(visit).setSubTreeRoot(make_group({make_triangle(7)}));
    EXPECT_EQ(updated(visit).getMin(), Pnt3f(7, 0, 0));
    shown->addChild(make_triangle(9));
    EXPECT_TRUE(visit->getVolume().isValid());
}

TEST(NodeViewers, ACopyOfOneWhoShowsATreeIsToldAsWell)
{
    NodePtr const shown = make_group({make_triangle(0)});
    NodePtr const visit = make_visit(shown);
    commit();
    UnrecordedRefPtr<FieldContainer> const core(visit->getCore()->shallowCopy());
    NodePtr const copied = make_node(dynamic_cast<NodeCore *>(core.get()));
    updated(copied);
    shown->addChild(make_triangle(9));
    EXPECT_EQ(updated(copied).getMax(), Pnt3f(10, 1, 0));
}

TEST(NodeViewers, NothingIsLeftOfThoseThatHaveGone)
{
    auto const come_and_go = []
    {
        NodePtr const shown = make_group();
        {
            NodePtr const visit = make_visit(shown);
            commit();
        }
        shown->addChild(make_group());
        NodePtr const visit = make_visit(make_group());
        commit();
        visit_of(visit).setSubTreeRoot(nullptr); // the root ends before the commit
        commit();
    };
    // Lists of the thread keep the room that they have once taken.
    come_and_go();
    commit();
    UInt64 const before = get_mem_bytes();
    come_and_go();
    commit();
    EXPECT_EQ(get_mem_bytes(), before);
}

TEST(NodeViewers, AChainOfVisitsOfAnyLengthIsFollowed)
{
    NodePtr const shown = make_group();
    std::vector<NodePtr> visits{shown};
    for(int i = 0; i < 100000; ++i)
        visits.push_back(make_visit(visits.back()));
    commit();
    for(NodePtr const &visit : visits)
        visit->updateVolume();
    shown->addChild(make_group());
    EXPECT_FALSE(visits.back()->getVolume().isValid());
    // Their ends would take one another along.
    while(!visits.empty())
        visits.pop_back();
}

TEST(NodeViewers, TreesThatShowOneAnotherHaveInfiniteBoxes)
{
    LogCapture log;
    NodePtr const first = make_group({make_triangle(0)});
    NodePtr const second = make_group({make_triangle(5), make_visit(first)});
    NodePtr const back = make_visit(second);
    first->addChild(back);
    NodePtr const aside = make_triangle(3);
    NodePtr const root = make_group({first, aside});
    EXPECT_TRUE(updated(root).isInfinite());
    EXPECT_TRUE(first->getVolume().isInfinite());
    EXPECT_TRUE(second->getVolume().isInfinite());
    EXPECT_FALSE(aside->getVolume().isInfinite());
    // Once the circle is opened the boxes are finite again.
    visit_of(back).setSubTreeRoot(nullptr);
    EXPECT_EQ(updated(root).getMax(), Pnt3f(4, 1, 0));
    EXPECT_EQ(updated(second).getMax(), Pnt3f(6, 1, 0));
}

TEST(NodeViewers, ALeafThatShowsATreeHasTheBoxThatTheTreeHasByThen)
{
    NodePtr const shown = make_group({make_triangle(0)});
    NodePtr const inside = make_visit(shown);
    NodePtr const outside = make_node(inside->getCore());
    shown->addChild(inside);
    NodePtr const root = make_group({shown, outside});
    LogCapture const silence(LOG_DUMP);
    updated(root);
    // It comes right after a leaf with the same core, for which the tree had no box yet.
    EXPECT_TRUE(outside->getVolume().isInfinite());
}
} // namespace OSG::Test
