#include "OSGGrpMergeGraphOp.h"

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "OSGDistanceLOD.h"
#include "OSGGraphOpFactory.h"
#include "OSGMultiCore.h"
#include "OSGScreenLOD.h"
#include "OSGSwitch.h"
#include "OperationScenes.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;
using OperationPtr = UnrecordedRefPtr<GrpMergeGraphOp>;

TEST(GrpMerge, IsRegisteredUnderItsName)
{
    UnrecordedRefPtr<GraphOp> const made(GraphOpFactoryBase::the()->create("GrpMerge"));
    ASSERT_NE(dynamic_cast<GrpMergeGraphOp *>(made.get()), nullptr);
    EXPECT_EQ(made->getName(), "GrpMerge");
    EXPECT_STREQ(GrpMergeGraphOp::getClassname(), "GrpMergeGraphOp");
}

TEST(GrpMerge, SaysWhatItDoes)
{
    OperationPtr const operation(GrpMergeGraphOp::create());
    EXPECT_EQ(operation->usage(), "GrpMerge: Combine adjacent Groups into one.\n");
}

TEST(GrpMerge, CreatedAndClonedItHasOneReferenceAndNoLists)
{
    OperationPtr const operation(GrpMergeGraphOp::create());
    EXPECT_EQ(operation->getRefCount(), 1);
    NodePtr const node = make_group();
    operation->addToExcludeList(node);
    operation->addToPreserveList(node);
    UnrecordedRefPtr<GraphOp> const cloned(operation->clone());
    EXPECT_EQ(cloned->getRefCount(), 1);
    EXPECT_EQ(cloned->getName(), "GrpMerge");
    EXPECT_FALSE(cloned->isInExcludeList(node));
    EXPECT_FALSE(cloned->isInPreserveList(node));
}

TEST(GrpMerge, ACopyHasTheLists)
{
    OperationPtr const operation(GrpMergeGraphOp::create());
    NodePtr const node = make_group();
    operation->addToExcludeList(node);
    OperationPtr const copy(new GrpMergeGraphOp(*operation));
    EXPECT_TRUE(copy->isInExcludeList(node));
    EXPECT_EQ(copy->getName(), "GrpMerge");
}

TEST(GrpMerge, HasNoParameters)
{
    OperationPtr const operation(GrpMergeGraphOp::create());
    LogCapture const log;
    operation->setParams("");
    EXPECT_THAT(log.texts(), IsEmpty());
    operation->setParams("a=1, b");
    EXPECT_THAT(log.texts(LOG_WARNING),
                ElementsAre("GrpMergeGraphOp doesn't have parameters 'a=1 b'.\n"));
}

TEST(GrpMerge, TheChildrenOfAGroupComeLastInTheNodeAbove)
{
    NodePtr const a = make_triangle();
    NodePtr const b = make_triangle();
    NodePtr const c = make_triangle();
    NodePtr const d = make_triangle();
    NodePtr const root = make_group({make_group({a, b}), c, make_group({d})});
    EXPECT_TRUE(run<GrpMergeGraphOp>(root));
    EXPECT_THAT(children_of(root), ElementsAre(c, a, b, d));
}

TEST(GrpMerge, AGroupWithoutChildrenGoes)
{
    NodePtr const root = make_group({make_group(), make_triangle()});
    run<GrpMergeGraphOp>(root);
    ASSERT_EQ(root->getNChildren(), 1u);
    EXPECT_NE(core_of<Geometry>(root->getChild(0)), nullptr);
}

TEST(GrpMerge, AGroupOfEmptyGroupsGoesWithThem)
{
    NodePtr const root = make_group({make_group({make_group(), make_group()})});
    run<GrpMergeGraphOp>(root);
    EXPECT_EQ(root->getNChildren(), 0u);
}

TEST(GrpMerge, AnEmptyGroupIsNotTakenOverEvenWhereItIsPreserved)
{
    NodePtr const empty = make_group();
    NodePtr const kept = make_triangle();
    NodePtr const root = make_group({make_group({empty, kept})});
    OperationPtr const operation(GrpMergeGraphOp::create());
    operation->addToPreserveList(empty);
    operation->traverse(root);
    EXPECT_THAT(children_of(root), ElementsAre(kept));
}

TEST(GrpMerge, APreservedGroupStaysWithAllThatItHolds)
{
    NodePtr const inner = make_group({make_triangle()});
    NodePtr const preserved = make_group({inner});
    NodePtr const root = make_group({preserved});
    OperationPtr const operation(GrpMergeGraphOp::create());
    operation->addToPreserveList(preserved);
    operation->traverse(root);
    EXPECT_THAT(children_of(root), ElementsAre(preserved));
    EXPECT_THAT(children_of(preserved), ElementsAre(inner));
}

TEST(GrpMerge, BelowAPreservedGroupItWorksAsUsual)
{
    NodePtr const shape = make_triangle();
    NodePtr const switched = make<Switch>({make_group({make_group({shape})})});
    NodePtr const preserved = make_group({switched});
    NodePtr const root = make_group({preserved});
    OperationPtr const operation(GrpMergeGraphOp::create());
    operation->addToPreserveList(preserved);
    operation->traverse(root);
    EXPECT_THAT(children_of(switched->getChild(0)), ElementsAre(shape));
}

TEST(GrpMerge, AnExcludedGroupStaysAndIsNotEntered)
{
    NodePtr const deepest = make_group({make_triangle()});
    NodePtr const inner = make_transform(Matrix(), {deepest});
    NodePtr const excluded = make_group({inner});
    NodePtr const root = make_group({excluded});
    OperationPtr const operation(GrpMergeGraphOp::create());
    operation->addToExcludeList(excluded);
    operation->traverse(root);
    EXPECT_THAT(children_of(root), ElementsAre(excluded));
    EXPECT_THAT(children_of(excluded), ElementsAre(inner));
    EXPECT_THAT(children_of(inner), ElementsAre(deepest));
}

TEST(GrpMerge, TheListsAreWhatTheyWere)
{
    NodePtr const excluded = make_group();
    NodePtr const preserved = make_group();
    NodePtr const root = make_group({excluded, preserved});
    OperationPtr const operation(GrpMergeGraphOp::create());
    operation->addToExcludeList(excluded);
    operation->addToPreserveList(preserved);
    operation->traverse(root);
    EXPECT_THAT(operation->getExcludeList().getList(), ElementsAre(excluded));
    EXPECT_THAT(operation->getPreserveList().getList(), ElementsAre(preserved));
}

template <class Core>
class ChildrenWithPlaces : public testing::Test
{
};
using CoresWithPlaces = testing::Types<Switch, MultiSwitch, DistanceLOD, ScreenLOD, MultiCore>;
TYPED_TEST_SUITE(ChildrenWithPlaces, CoresWithPlaces);

TYPED_TEST(ChildrenWithPlaces, StayAndBelowThemItWorksAsUsual)
{
    NodePtr const shape = make_triangle();
    NodePtr const group = make_group({make_group({shape})});
    NodePtr const empty = make_group();
    NodePtr const placed = make<TypeParam>({empty, group});
    NodePtr const root = make_group({placed});
    run<GrpMergeGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(placed));
    EXPECT_THAT(children_of(placed), ElementsAre(empty, group));
    EXPECT_THAT(children_of(group), ElementsAre(shape));
}

TEST(GrpMerge, WhatDerivesFromAGroupIsNotDissolved)
{
    NodePtr const moved = make_transform(Matrix(), {make_triangle()});
    NodePtr const visit = make_visit(nullptr);
    NodePtr const root = make_group({moved, visit});
    run<GrpMergeGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(moved, visit));
}

TEST(GrpMerge, AChainOfGroupsGoesInOneWalk)
{
    NodePtr const shape = make_triangle();
    NodePtr const root = make_chain(1000, shape, [] { return make_group(); });
    run<GrpMergeGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(shape));
}

TEST(GrpMerge, TheRootStays)
{
    NodePtr const root = make_group();
    NodePtr const above = make_group({root});
    EXPECT_TRUE(run<GrpMergeGraphOp>(root));
    EXPECT_THAT(children_of(above), ElementsAre(root));
}

TEST(GrpMerge, NodesWithoutACoreStayButGoWithTheirGroup)
{
    NodePtr const bare = make_node(nullptr, {make_group({make_triangle()})});
    NodePtr const root = make_group({bare, make_group({make_node(nullptr)})});
    run<GrpMergeGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(bare));
    EXPECT_EQ(bare->getChild(0)->getNChildren(), 1u) << "nothing is merged into a node without one";
}

TEST(GrpMerge, ACoreThatIsSharedDoesNotMatter)
{
    UnrecordedRefPtr<Group> const shared(Group::create());
    NodePtr const shape = make_triangle();
    NodePtr const root = make_node(shared, {make_node(shared, {shape}), make_node(shared)});
    run<GrpMergeGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(shape));
    EXPECT_EQ(shared->getParents().size(), 1u);
}

TEST(GrpMerge, AGroupThatAHostHoldsIsLeftEmpty)
{
    NodePtr const shape = make_triangle();
    NodePtr const group = make_group({shape, make_group()});
    NodePtr const root = make_group({group});
    run<GrpMergeGraphOp>(root);
    EXPECT_EQ(group->getParent(), nullptr);
    EXPECT_EQ(group->getNChildren(), 0u);
    EXPECT_EQ(shape->getParent(), root);
}

TEST(GrpMerge, ALeaveFunctionMergesOneLevel)
{
    NodePtr const shape = make_triangle();
    NodePtr const inner = make_group({shape});
    NodePtr const root = make_group({make_group({inner})});
    OperationPtr const operation(GrpMergeGraphOp::create());
    EXPECT_EQ(operation->traverseLeave(root, ActionBase::Skip), ActionBase::Continue);
    EXPECT_THAT(children_of(root), ElementsAre(inner));
}
} // namespace
} // namespace OSG::Test
