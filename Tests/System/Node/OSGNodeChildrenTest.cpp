// The child list of nodes that are edited child by child.

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGNodeWalker.h"
#include "RandomNumbers.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
constexpr UInt32 Many = 200000;

NodePtr bare() { return NodePtr(Node::create()); }

NodePtr wide(UInt32 count)
{
    NodePtr const root = bare();
    for(UInt32 i = 0; i < count; ++i)
        root->addChild(bare());
    return root;
}

std::vector<Node *> listed(Node const *node)
{
    return std::vector<Node *>(node->getMFChildren()->begin(), node->getMFChildren()->end());
}

/// Reads the children in every possible way and compares them with a plain list.
void compare(Node const *node, std::vector<Node *> const &plain)
{
    ASSERT_EQ(node->getNChildren(), plain.size());
    ASSERT_EQ(listed(node), plain);
    for(UInt32 i = 0; i < plain.size(); ++i)
    {
        ASSERT_EQ(node->getChild(i), plain[i]);
        ASSERT_EQ((*node->getMFChildren())[i], plain[i]);
        ASSERT_EQ(node->findChild(plain[i]), static_cast<Int32>(i));
        ASSERT_EQ(plain[i]->getParent(), node);
    }
}

TEST(NodeChildren, ArePlainListsUnderRandomEditsOfTwoNodes)
{
    for(UInt32 seed = 0; seed < 10; ++seed)
    {
        RandomNumbers random(seed);
        NodePtr const nodes[2] = {bare(), bare()};
        std::vector<Node *> plain[2];
        for(int edit = 0; edit < 1500; ++edit)
        {
            UInt32 const which = random.below(2);
            std::vector<Node *> &list = plain[which];
            UInt32 const what = random.below(edit % 300 < 150 ? 5 : 12);
            if(list.empty() || what < 2)
            {
                NodePtr const child = bare();
                nodes[which]->addChild(child);
                list.push_back(child);
                continue;
            }
            UInt32 const index = random.below(static_cast<UInt32>(list.size()));
            NodePtr const child(list[index]);
            list.erase(list.begin() + index);
            if(what == 2)
            {
                nodes[1 - which]->addChild(child);
                plain[1 - which].push_back(child);
            }
            else if(what == 3)
            {
                nodes[which]->addChild(child);
                list.push_back(child);
            }
            else if(what % 2 == 0)
                nodes[which]->subChild(index);
            else
                nodes[which]->subChild(child.get());
            compare(nodes[0], plain[0]);
            compare(nodes[1], plain[1]);
            ASSERT_FALSE(testing::Test::HasFatalFailure()) << seed << ' ' << edit;
        }
    }
}

struct Order
{
    char const *name;
    UInt32 (*index)(UInt32 left);
};

void PrintTo(Order const &order, std::ostream *out) { *out << order.name; }

class ManyChildren : public testing::TestWithParam<Order>
{
};

TEST_P(ManyChildren, GoOneByOneByIndexInTime)
{
    NodePtr const root = wide(Many);
    while(root->getNChildren() != 0)
        root->subChild(GetParam().index(root->getNChildren()));
}

TEST_P(ManyChildren, GoOneByOneByPointerInTime)
{
    NodePtr const root = wide(Many);
    while(root->getNChildren() != 0)
        root->subChild(root->getChild(GetParam().index(root->getNChildren())));
}

TEST_P(ManyChildren, MoveToAnotherNodeOneByOneInTime)
{
    NodePtr const from = wide(Many);
    NodePtr const to = bare();
    while(from->getNChildren() != 0)
        to->addChild(from->getChild(GetParam().index(from->getNChildren())));
    EXPECT_EQ(to->getNChildren(), Many);
}

INSTANTIATE_TEST_SUITE_P(Orders, ManyChildren,
                         testing::Values(Order{"FromTheFront", [](UInt32) { return 0u; }},
                                         Order{"FromTheBack", [](UInt32 left) { return left - 1; }},
                                         Order{"FromTheMiddle",
                                               [](UInt32 left) { return left / 2; }},
                                         Order{"FromBothEnds", [](UInt32 left)
                                               { return left % 2 == 0 ? 0 : left - 1; }}),
                         [](auto const &row) { return std::string(row.param.name); });

TEST(NodeChildren, EverySecondGoesByPointerAndThenTheRestInTime)
{
    NodePtr const root = wide(Many);
    std::vector<Node *> const all = listed(root);
    std::vector<Node *> kept;
    for(UInt32 i = 0; i < Many; ++i)
    {
        if(i % 2 == 0)
            root->subChild(all[i]);
        else
            kept.push_back(all[i]);
    }
    EXPECT_EQ(listed(root), kept);
    for(Node *child : kept)
        root->subChild(child);
    EXPECT_EQ(root->getNChildren(), 0u);
}

TEST(NodeChildren, AWalkGoesOnByIndexWhereAChildMovesInItsMiddle)
{
    struct Remover
    {
        Node *root;
        std::vector<Node *> entered = {};

        bool enter(Node *node)
        {
            entered.push_back(node);
            // The first child, which was walked, comes once more as the last one.
            if(entered.size() == 4)
                root->addChild(root->getChild(0));
            return true;
        }
        void leave(Node *) {}
    };
    NodePtr const root = wide(5);
    std::vector<Node *> const all = listed(root);
    Remover remover{root};
    walk_children(root, remover);
    // The fourth has closed up to the place of the third, where the walk has been.
    EXPECT_EQ(remover.entered, (std::vector<Node *>{root, all[0], all[1], all[2], all[4], all[0]}));
}

TEST(NodeChildren, AnIteratorSeesTheListAsItIsNow)
{
    NodePtr const root = wide(6);
    std::vector<Node *> const all = listed(root);
    auto it = root->getMFChildren()->begin();
    ++it;
    root->subChild(4u);
    root->subChild(2u);
    EXPECT_EQ(*it, all[1]);
    ++it;
    EXPECT_EQ(*it, all[3]);
    ++it;
    EXPECT_EQ(*it, all[5]);
    ++it;
    EXPECT_TRUE(it == root->getMFChildren()->end());
}

TEST(NodeChildren, EveryEditMarksTheField)
{
    NodePtr const root = wide(3);
    root->takeChangeMask();
    root->subChild(1u);
    EXPECT_NE(root->getChangeMask() & Node::ChildrenFieldMask, 0u);
}

// --- the tree stays a tree ---

TEST(NodeChildren, AncestorsOfAnyDistanceAreRefused)
{
    for(UInt32 const depth : {1u, 2u, 3u, 4u, 5u, 6u, 50u})
    {
        NodePtr const leaf = bare();
        NodePtr const top = make_chain(depth, leaf, [] { return bare(); });
        NodePtr const above = make_chain(6, top, [] { return bare(); });
        LogCapture const log;
        leaf->addChild(top);
        EXPECT_EQ(leaf->getNChildren(), 0u) << depth;
        EXPECT_EQ(log.messages().size(), 1u);
    }
}

TEST(NodeChildren, NodesFromAnyPlaceOfTheTreeThatIsNotAboveAreTaken)
{
    // Two arms of a fork, each of some levels; the inner arm goes below each node of the other.
    for(UInt32 arm = 1; arm < 8; ++arm)
    {
        for(UInt32 to = 0; to < 8; ++to)
        {
            NodePtr const moved = bare();
            moved->addChild(bare());
            NodePtr const fork = bare();
            fork->addChild(make_chain(arm - 1, moved, [] { return bare(); }));
            fork->addChild(make_chain(8, bare(), [] { return bare(); }));
            NodePtr const root = make_chain(3, fork, [] { return bare(); });
            Node *target = fork->getChild(1);
            for(UInt32 i = 0; i < to; ++i)
                target = target->getChild(0);
            LogCapture const log;
            target->addChild(moved);
            EXPECT_EQ(moved->getParent(), target);
            EXPECT_TRUE(log.messages().empty());
        }
    }
}

TEST(NodeChildren, TreesThatMoveUpInAVeryDeepTreeDoNotSearchIt)
{
    // Each level has a branch of two below it, which comes up: with a way to the root for each of
    // them this would take minutes.
    NodePtr const root =
        make_chain(Many, bare(),
                   []
                   {
                       NodePtr const level = bare();
                       level->addChild(make_chain(2, bare(), [] { return bare(); }));
                       return level;
                   });
    Node *level = root;
    while(level->getNChildren() == 2)
    {
        level->addChild(level->getChild(0)->getChild(0));
        level = level->getChild(1);
    }
    EXPECT_EQ(root->getNChildren(), 3u);
}
} // namespace
} // namespace OSG::Test
