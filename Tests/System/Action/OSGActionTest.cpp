#include "OSGAction.h"

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "OSGSwitch.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

std::string const Ended = "Traversal: a subtree is added below itself or too deep, it ends here\n";

/// Writes down what happens: "+3" for entering node 3, "-3" for leaving it.
class ActionTest : public testing::Test
{
  protected:
    struct OpenAction : Action
    {
        OpenAction() = default;
        OpenAction(OpenAction const &) = default;
        ~OpenAction() override = default;
        ResultE start() override
        {
            log->push_back("start");
            return startResult;
        }
        ResultE stop(ResultE result) override
        {
            log->push_back("stop");
            return result;
        }
        std::vector<std::string> *log = nullptr;
        ResultE startResult = Continue;
    };

    ActionTest()
    {
        action.log = &events;
        action.registerEnterFunction(Group::getClassType(),
                                     [this](NodeCore *core, Action *) { return enter(core); });
        action.registerLeaveFunction(Group::getClassType(),
                                     [this](NodeCore *core, Action *)
                                     {
                                         note('-', core);
                                         return ActionBase::Continue;
                                     });
    }

    /// Nodes are numbered in the order in which they are made.
    NodePtr node(Children const &children = {})
    {
        NodePtr const made = make_group(children);
        numbers[made->getCore()] = static_cast<int>(numbers.size());
        return made;
    }

    ActionBase::ResultE enter(NodeCore *core)
    {
        note('+', core);
        if(onEnter[numbers[core]])
            return onEnter[numbers[core]]();
        return ActionBase::Continue;
    }

    void note(char sign, NodeCore *core) { events.push_back(sign + std::to_string(numbers[core])); }

    std::vector<std::string> const &walk(Node *root)
    {
        events.clear();
        action.apply(root);
        return events;
    }

    OpenAction action;
    std::vector<std::string> events;
    std::map<NodeCore *, int> numbers;
    std::map<int, std::function<ActionBase::ResultE()>> onEnter;
};

TEST_F(ActionTest, EntersBeforeTheChildrenAndLeavesAfterThem)
{
    NodePtr const leaf = node();
    NodePtr const second = node();
    NodePtr const root = node({node({leaf}), second});
    EXPECT_THAT(walk(root),
                ElementsAre("start", "+3", "+2", "+0", "-0", "-2", "+1", "-1", "-3", "stop"));
}

TEST_F(ActionTest, ASkippedNodeHidesWhatIsBelowItAlone)
{
    NodePtr const below = node();                // 0
    NodePtr const skipped = node({below});       // 1
    NodePtr const after = node();                // 2
    NodePtr const root = node({skipped, after}); // 3
    onEnter[1] = [] { return ActionBase::Skip; };
    EXPECT_THAT(walk(root), ElementsAre("start", "+3", "+1", "+2", "-2", "-3", "stop"));
}

TEST_F(ActionTest, WhatStartRefusesIsNotWalked)
{
    NodePtr const root = node();
    action.startResult = ActionBase::Skip;
    EXPECT_EQ(action.apply(root), ActionBase::Skip);
    EXPECT_THAT(events, ElementsAre("start", "stop"));
}

TEST_F(ActionTest, NullWalksNothing) { EXPECT_THAT(walk(nullptr), ElementsAre("start", "stop")); }

TEST_F(ActionTest, SeveralRootsHaveOneStartAndOneStop)
{
    NodePtr const first = node();
    NodePtr const second = node();
    std::vector<Node *> roots = {first, nullptr, second};
    action.apply(roots.begin(), roots.end());
    EXPECT_THAT(events, ElementsAre("start", "+0", "-0", "+1", "-1", "stop"));
}

TEST_F(ActionTest, TypesWithoutAFunctionArePassedThrough)
{
    NodePtr const leaf = node();
    UnrecordedRefPtr<Switch> const core(Switch::create());
    NodePtr const root = make_node(core, {make_node(nullptr, {leaf})});
    EXPECT_THAT(walk(root), ElementsAre("start", "+0", "-0", "stop"));
}

TEST_F(ActionTest, ALaterFunctionReplacesTheEarlierOneOfItsType)
{
    NodePtr const root = node();
    action.registerEnterFunction(Group::getClassType(), &Action::_defaultEnterFunction);
    action.registerLeaveFunction(Group::getClassType(), &Action::_defaultLeaveFunction);
    EXPECT_THAT(walk(root), ElementsAre("start", "stop"));
}

TEST_F(ActionTest, ACopyHasTheFunctionsAndTheSettings)
{
    NodePtr const root = node();
    action.setTravMask(6);
    action.setUsePrimitiveIndex(false);
    OpenAction copy(action);
    EXPECT_EQ(copy.getTravMask(), 6u);
    EXPECT_FALSE(copy.getUsePrimitiveIndex());
    copy.apply(root);
    EXPECT_THAT(events, ElementsAre("start", "+0", "-0", "stop"));
}

TEST_F(ActionTest, NodesThatShareNoBitWithTheMaskAreNotWalked)
{
    NodePtr const hidden = node({node()});
    NodePtr const seen = node();
    hidden->setTravMask(4);
    NodePtr const root = node({hidden, seen});
    action.setTravMask(3);
    EXPECT_THAT(walk(root), ElementsAre("start", "+3", "+2", "-2", "-3", "stop"));
}

TEST_F(ActionTest, TheCurrentNodeAndItsChildrenAreKnownDuringACall)
{
    NodePtr const leaf = node();
    NodePtr const root = node({leaf});
    onEnter[1] = [&]
    {
        EXPECT_EQ(action.getActNode(), root);
        EXPECT_EQ(action.getNNodes(), 1u);
        EXPECT_EQ(action.getNode(0), leaf);
        EXPECT_EQ(action.getNode(1), nullptr);
        return ActionBase::Continue;
    };
    walk(root);
    EXPECT_EQ(action.getActNode(), nullptr);
    EXPECT_EQ(action.getNNodes(), 0u);
}

// --- indices ---

TEST_F(ActionTest, GeometriesAnsweredThroughAnIndexAreCountedFromTheBeginOfEachWalk)
{
    NodePtr const leaf = node();
    NodePtr const root = node({leaf});
    auto const count = [&]
    {
        action.countIndexed();
        return ActionBase::Continue;
    };
    onEnter[0] = onEnter[1] = count;
    EXPECT_TRUE(action.getUsePrimitiveIndex());
    EXPECT_EQ(action.getIndexedGeometries(), 0u);
    walk(root);
    EXPECT_EQ(action.getIndexedGeometries(), 2u);
    walk(leaf);
    EXPECT_EQ(action.getIndexedGeometries(), 1u);
    walk(nullptr);
    EXPECT_EQ(action.getIndexedGeometries(), 0u);
}

// --- added nodes ---

TEST_F(ActionTest, AddedNodesTakeThePlaceOfTheChildren)
{
    NodePtr const first = node();
    NodePtr const second = node();
    NodePtr const other = node();
    NodePtr const root = node({first, second});
    onEnter[3] = [&]
    {
        action.addNode(second);
        action.addNode(other);
        return ActionBase::Continue;
    };
    EXPECT_THAT(walk(root), ElementsAre("start", "+3", "+1", "-1", "+2", "-2", "-3", "stop"));
}

TEST_F(ActionTest, NodesAddedBeforeASkipAreForgotten)
{
    NodePtr const skipped = node();
    NodePtr const child = node();
    NodePtr const after = node({child});
    NodePtr const root = node({skipped, after});
    onEnter[0] = [&]
    {
        action.addNode(root);
        return ActionBase::Skip;
    };
    EXPECT_THAT(walk(root), ElementsAre("start", "+3", "+0", "+2", "+1", "-1", "-2", "-3", "stop"));
}

TEST_F(ActionTest, NullCountsAsACallAndIsPassedOver)
{
    NodePtr const root = node({node()});
    onEnter[1] = [&]
    {
        action.addNode(nullptr);
        return ActionBase::Continue;
    };
    EXPECT_THAT(walk(root), ElementsAre("start", "+1", "-1", "stop"));
}

TEST_F(ActionTest, ANodeAddedBelowItselfEndsItsBranchWithOneWarning)
{
    LogCapture log;
    NodePtr const inner = node();
    NodePtr const root = node({inner, node()});
    for(int number : {0, 1})
        onEnter[number] = [&]
        {
            action.addNode(root);
            return ActionBase::Continue;
        };
    EXPECT_THAT(walk(root), ElementsAre("start", "+2", "+0", "-0", "+1", "-1", "-2", "stop"));
    EXPECT_THAT(log.texts(LOG_WARNING), ElementsAre(Ended));
}

TEST_F(ActionTest, SeveralRootsShareOneWarning)
{
    LogCapture log;
    NodePtr const root = node();
    onEnter[0] = [&]
    {
        action.addNode(root);
        return ActionBase::Continue;
    };
    std::vector<Node *> roots = {root, root};
    action.apply(roots.begin(), roots.end());
    EXPECT_THAT(log.texts(LOG_WARNING), ElementsAre(Ended));
}

TEST_F(ActionTest, TheNextWalkWarnsAnew)
{
    LogCapture log;
    NodePtr const root = node();
    onEnter[0] = [&]
    {
        action.addNode(root);
        return ActionBase::Continue;
    };
    walk(root);
    walk(root);
    EXPECT_THAT(log.texts(LOG_WARNING), ElementsAre(Ended, Ended));
}

TEST_F(ActionTest, ATreeMayBeAddedTwiceSideBySide)
{
    LogCapture log;
    NodePtr const shared = node();
    NodePtr const root = node();
    onEnter[1] = [&]
    {
        action.addNode(shared);
        action.addNode(shared);
        return ActionBase::Continue;
    };
    EXPECT_THAT(walk(root), ElementsAre("start", "+1", "+0", "-0", "+0", "-0", "-1", "stop"));
    EXPECT_THAT(log.texts(), IsEmpty());
}
} // namespace
} // namespace OSG::Test
