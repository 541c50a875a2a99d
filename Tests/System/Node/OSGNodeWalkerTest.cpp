#include "OSGNodeWalker.h"

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

std::string const Ended = "Traversal: a subtree is added below itself or too deep, it ends here\n";

struct Counter
{
    bool enter(Node *)
    {
        ++entered;
        return true;
    }
    void leave(Node *) { ++left; }

    UInt32 entered = 0;
    UInt32 left = 0;
};

/// Adds, for each node of `added`, these others below it.
struct Adder : Counter
{
    bool enter(Node *node)
    {
        current = node;
        return Counter::enter(node);
    }
    bool takeAdded(std::vector<Node *> &nodes)
    {
        auto const found = added.find(current);
        if(found == added.end())
            return false;
        nodes = found->second;
        return true;
    }

    Node *current = nullptr;
    std::map<Node *, std::vector<Node *>> added;
};

TEST(NodeWalker, WalksAHundredThousandLevels)
{
    NodePtr const root = make_chain(100000, make_group(), [] { return make_group(); });
    Counter counter;
    walk_children(root, counter);
    EXPECT_EQ(counter.entered, 100001u);
    EXPECT_EQ(counter.left, 100001u);
}

TEST(NodeWalker, NullIsAnEmptyWalk)
{
    Counter counter;
    walk_children(nullptr, counter);
    EXPECT_EQ(counter.entered, 0u);
}

TEST(NodeWalker, ChildrenAddedDuringTheWalkAreWalkedToo)
{
    struct Grower : Counter
    {
        bool enter(Node *node)
        {
            if(entered == 1)
                node->getParent()->addChild(make_group());
            return Counter::enter(node);
        }
    };
    NodePtr const root = make_group({make_group()});
    Grower grower;
    walk_children(root, grower);
    EXPECT_EQ(grower.entered, 3u);
}

TEST(NodeWalker, ChildrenTakenAwayDuringTheWalkAreNotWalked)
{
    struct Pruner : Counter
    {
        bool enter(Node *node)
        {
            if(entered == 1)
                node->getParent()->subChild(1);
            return Counter::enter(node);
        }
    };
    NodePtr const root = make_group({make_group(), make_group(), make_group()});
    Pruner pruner;
    walk_children(root, pruner);
    EXPECT_EQ(pruner.entered, 3u);
}

TEST(NodeWalker, AddedNodesNestAThousandAndTwentyFourLevelsDeep)
{
    LogCapture log;
    std::vector<NodePtr> nodes;
    Adder adder;
    for(UInt32 i = 0; i < NodeWalker::MaxAddedLevels + 3; ++i)
        nodes.push_back(make_group());
    for(std::size_t i = 0; i + 1 < nodes.size(); ++i)
        adder.added[nodes[i]] = {nodes[i + 1]};
    NodeWalker().walk(nodes[0].get(), adder);
    EXPECT_EQ(adder.entered, NodeWalker::MaxAddedLevels + 1);
    EXPECT_EQ(adder.left, adder.entered);
    EXPECT_THAT(log.texts(LOG_WARNING), ElementsAre(Ended));
}

TEST(NodeWalker, LevelsThatAreDoneDoNotCount)
{
    LogCapture log;
    NodePtr const other = make_group();
    NodePtr const root = make_group();
    Adder adder;
    adder.added[root] = std::vector<Node *>(3000, other);
    NodeWalker().walk(root.get(), adder);
    EXPECT_EQ(adder.entered, 3001u);
    EXPECT_THAT(log.texts(), IsEmpty());
}

TEST(NodeWalker, ChildrenThatAreAddedNestToAnyDepth)
{
    LogCapture log;
    NodePtr const root = make_chain(5000, make_group(), [] { return make_group(); });
    Adder adder;
    for(Node *node = root; node->getNChildren() != 0; node = node->getChild(0))
        adder.added[node] = {node->getChild(0)};
    NodeWalker().walk(root.get(), adder);
    EXPECT_EQ(adder.entered, 5001u);
    EXPECT_THAT(log.texts(), IsEmpty());
}

TEST(NodeWalker, ManyNodesMayBeAddedDeepDown)
{
    // Looking for an open frame level by level would take ten billion steps here.
    NodePtr const last = make_group();
    NodePtr const other = make_group();
    NodePtr const root = make_chain(100000, last, [] { return make_group(); });
    Adder adder;
    adder.added[last] = std::vector<Node *>(100000, other);
    NodeWalker().walk(root.get(), adder);
    EXPECT_EQ(adder.entered, 200001u);
}

TEST(NodeWalker, TheRootOfTheWalkMayBeMetAgainBelowItsOwnParent)
{
    LogCapture log;
    NodePtr const visit = make_group();
    NodePtr const root = make_group({visit});
    NodePtr const above = make_group({root});
    Adder adder;
    adder.added[visit] = {above};
    NodeWalker walker;
    walker.walk(root.get(), adder); // root, visit, above, root, visit, and above is open
    EXPECT_EQ(adder.entered, 5u);
    EXPECT_EQ(adder.left, 5u);
    walker.walk(root.get(), adder);
    EXPECT_EQ(adder.entered, 10u);
    EXPECT_THAT(log.texts(LOG_WARNING), ElementsAre(Ended));
}

TEST(NodeWalker, ACycleThroughAMillionRepeatsEnds)
{
    LogCapture log;
    NodePtr const inner = make_group();
    NodePtr const root = make_group({inner});
    Adder adder;
    adder.added[inner] = std::vector<Node *>(1000000, root);
    NodeWalker().walk(root.get(), adder);
    EXPECT_EQ(adder.entered, 2u);
    EXPECT_THAT(log.texts(LOG_WARNING), ElementsAre(Ended));
}
} // namespace

TEST(NodeWalker, SharedSubtreesThatMultiplyArePassedOverBeyondAMillion)
{
    LogCapture log;
    // Forty levels, each shown twice by the one above: a million million nodes.
    std::vector<NodePtr> levels{make_group()};
    Adder adder;
    for(int i = 0; i < 40; ++i)
    {
        levels.push_back(make_group());
        adder.added[levels[levels.size() - 1]] = {levels[levels.size() - 2],
                                                  levels[levels.size() - 2]};
    }
    NodeWalker().walk(levels.back().get(), adder);
    EXPECT_EQ(adder.entered, NodeWalker::MaxAddedNodes + 1);
    EXPECT_EQ(adder.left, adder.entered);
    EXPECT_THAT(log.texts(LOG_WARNING),
                ElementsAre("Traversal: 1048576 subtrees have been added, further ones are passed "
                            "over\n"));
}
} // namespace OSG::Test
