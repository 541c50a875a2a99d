#include "OSGGraphOp.h"

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "OSGChangeList.h"
#include "OSGThread.h"
#include "SceneBuilders.h"
#include "TestOperation.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;
using OperationPtr = UnrecordedRefPtr<TestOperation>;

/// Notes the way of a walk: nodes as they are entered, and with a minus as they are left.
struct Trace
{
    explicit Trace(TestOperation &operation)
    {
        operation.enter = [this](Node *node)
        {
            entered.push_back(node);
            return node == skipped ? ActionBase::Skip : ActionBase::Continue;
        };
        operation.leave = [this](Node *node, ActionBase::ResultE result)
        {
            left.push_back(node);
            results.push_back(result);
            return answer;
        };
    }

    Node *skipped = nullptr;
    ActionBase::ResultE answer = ActionBase::Continue;
    std::vector<Node *> entered;
    std::vector<Node *> left;
    std::vector<ActionBase::ResultE> results;
};

TEST(GraphOp, HasTheNameThatItWasMadeWith)
{
    OperationPtr const operation(TestOperation::create("Thin"));
    EXPECT_EQ(operation->getName(), "Thin");
}

TEST(GraphOp, EntersBeforeTheChildrenAndLeavesAfterThem)
{
    NodePtr const inner = make_group();
    NodePtr const first = make_group({inner});
    NodePtr const second = make_group();
    NodePtr const root = make_group({first, second});
    OperationPtr const operation(TestOperation::create());
    Trace const trace(*operation);
    EXPECT_TRUE(operation->traverse(root));
    EXPECT_THAT(trace.entered, ElementsAre(root, first, inner, second));
    EXPECT_THAT(trace.left, ElementsAre(inner, first, second, root));
    EXPECT_THAT(trace.results, testing::Each(ActionBase::Continue));
}

TEST(GraphOp, ASkippedNodeIsNeitherEnteredBelowNorLeft)
{
    NodePtr const first = make_group({make_group()});
    NodePtr const second = make_group();
    NodePtr const root = make_group({first, second});
    OperationPtr const operation(TestOperation::create());
    Trace trace(*operation);
    trace.skipped = first;
    EXPECT_TRUE(operation->traverse(root));
    EXPECT_THAT(trace.entered, ElementsAre(root, first, second));
    EXPECT_THAT(trace.left, ElementsAre(second, root));
}

TEST(GraphOp, WhatTheLeaveFunctionReturnsHasNoEffect)
{
    NodePtr const root = make_group({make_group(), make_group()});
    OperationPtr const operation(TestOperation::create());
    Trace trace(*operation);
    trace.answer = ActionBase::Skip;
    EXPECT_TRUE(operation->traverse(root));
    EXPECT_EQ(trace.left.size(), 3u);
}

TEST(GraphOp, NullDoesNotGoThrough)
{
    OperationPtr const operation(TestOperation::create());
    EXPECT_FALSE(operation->traverse(nullptr));
}

TEST(GraphOp, NodesWithoutACoreAreWalkedToo)
{
    NodePtr const root = make_node(nullptr, {make_group()});
    OperationPtr const operation(TestOperation::create());
    Trace const trace(*operation);
    operation->traverse(root);
    EXPECT_EQ(trace.left.size(), 2u);
}

TEST(GraphOp, AVisitedTreeIsNotWalkedNotEvenInACycle)
{
    NodePtr const visit = make_visit(nullptr);
    NodePtr const root = make_group({visit});
    static_cast<VisitSubTree *>(visit->getCore())->setSubTreeRoot(root);
    OperationPtr const operation(TestOperation::create());
    Trace const trace(*operation);
    operation->traverse(root);
    EXPECT_THAT(trace.entered, ElementsAre(root, visit));
    static_cast<VisitSubTree *>(visit->getCore())->setSubTreeRoot(nullptr);
}

TEST(GraphOp, TheLeaveFunctionMayTakeAwayAddAndReplaceTheChildrenOfItsNode)
{
    NodePtr const kept = make_group();
    NodePtr const root = make_group({make_group({make_group()}), make_group({kept}), make_group()});
    OperationPtr const operation(TestOperation::create());
    UInt32 left = 0;
    operation->leave = [&](Node *node, ActionBase::ResultE result)
    {
        ++left;
        if(node != root)
            return result;
        node->addChild(kept);
        while(node->getNChildren() > 1)
            node->subChild(0u);
        return result;
    };
    EXPECT_TRUE(operation->traverse(root));
    EXPECT_EQ(left, 6u);
    ASSERT_EQ(root->getNChildren(), 1u);
    EXPECT_EQ(root->getChild(0), kept);
}

TEST(GraphOp, AChainOfAHundredThousandLevelsIsGood)
{
    NodePtr const root = make_chain(100000, make_group(), [] { return make_group(); });
    OperationPtr const operation(TestOperation::create());
    Trace const trace(*operation);
    EXPECT_TRUE(operation->traverse(root));
    EXPECT_EQ(trace.left.size(), 100001u);
}

TEST(GraphOp, KeepsTheListsOfItsCaller)
{
    NodePtr const a = make_group();
    NodePtr const b = make_group();
    OperationPtr const operation(TestOperation::create());
    operation->addToExcludeList(a);
    operation->addToPreserveList(b);
    EXPECT_TRUE(operation->isInExcludeList(a));
    EXPECT_FALSE(operation->isInExcludeList(b));
    EXPECT_TRUE(operation->isInPreserveList(b));
    EXPECT_FALSE(operation->isInPreserveList(a));
    EXPECT_THAT(operation->getExcludeList().getList(), ElementsAre(a));
    EXPECT_THAT(operation->getPreserveList().getList(), ElementsAre(b));
}

TEST(GraphOp, WordsThatNobodyKnowsGiveOneWarningAndTheOthersCount)
{
    OperationPtr const operation(TestOperation::create());
    LogCapture const log;
    operation->setParams("blue known green=1");
    EXPECT_TRUE(operation->known);
    EXPECT_THAT(log.texts(),
                ElementsAre("TestOperation doesn't have parameters 'blue green=1'.\n"));
}

TEST(GraphOp, KnownWordsGiveNoWarning)
{
    OperationPtr const operation(TestOperation::create());
    LogCapture const log;
    operation->setParams("known=1");
    operation->setParams("");
    EXPECT_THAT(log.texts(), IsEmpty());
}
} // namespace
} // namespace OSG::Test
