#include "OSGNodePath.h"

#include <gtest/gtest.h>

#include "OSGGroup.h"
#include "OSGNode.h"
#include "OSGVisitSubTree.h"

namespace OSG::Test
{
namespace
{
using NodePtr = UnrecordedRefPtr<Node>;
using VisitPtr = UnrecordedRefPtr<VisitSubTree>;

NodePtr node(std::vector<Node *> const &children = {})
{
    NodePtr result(Node::create());
    for(Node *child : children)
        result->addChild(child);
    return result;
}

NodePtr visit(Node *other)
{
    VisitPtr const core(VisitSubTree::create());
    core->setSubTreeRoot(other);
    NodePtr result(Node::create());
    result->setCore(core);
    return result;
}

TEST(NodePath, CountsChildrenFromTheRoot)
{
    NodePtr const deep = node();
    NodePtr const root = node({node({node(), node(), node(), deep}), node()});
    EXPECT_EQ(node_path(root, {}, root), "/");
    EXPECT_EQ(node_path(root, {}, root->getChild(1)), "/1");
    EXPECT_EQ(node_path(root, {}, deep), "/0/3");
}

TEST(NodePath, ARootThatHasAParentIsStillTheRoot)
{
    NodePtr const inner = node({node()});
    NodePtr const root = node({node(), inner});
    EXPECT_EQ(node_path(inner, {}, inner->getChild(0)), "/0");
}

TEST(NodePath, GoesOnBelowVisitedTrees)
{
    NodePtr const leaf = node();
    NodePtr const inner = node({node(), leaf});
    NodePtr const second = visit(inner);
    NodePtr const outer = node({second});
    NodePtr const first = visit(outer);
    NodePtr const root = node({node({node(), node(), node(), first})});
    EXPECT_EQ(node_path(root, {first}, outer), "/0/3@/");
    EXPECT_EQ(node_path(root, {first, second}, leaf), "/0/3@/0@/1");
    EXPECT_EQ(visiting_paths(root, {first, second}), (std::vector<std::string>{"/0/3", "/0/3@/0"}));
}

TEST(NodePath, StaysTheSameWhenTheChildBeforeItGoes)
{
    NodePtr const leaf = node();
    NodePtr const root = node({node(), leaf});
    NodePath const path(leaf);
    EXPECT_EQ(path.text(root), "/1");
    root->subChild(root->getChild(0));
    EXPECT_EQ(path, NodePath(leaf));
    EXPECT_EQ(path.text(root), "/0");
    EXPECT_TRUE(path.isIn(root));
    root->subChild(leaf);
    EXPECT_FALSE(path.isIn(root));
}

TEST(NodePath, TwoVisitsOfOneNodeAreTwoPaths)
{
    NodePtr const leaf = node();
    NodePtr const inner = node({leaf});
    NodePtr const first = visit(inner);
    NodePtr const second = visit(inner);
    NodePtr const root = node({first, second});
    NodePath const a(leaf, {first});
    NodePath const b(leaf, {second});
    EXPECT_NE(a, b);
    EXPECT_EQ(a.hash(), NodePath(leaf, {first}).hash());
    EXPECT_TRUE(a.isIn(root));
    EXPECT_EQ(a.text(root), "/0@/0");
    EXPECT_TRUE(a.isBelow(NodePath(first)));
    EXPECT_TRUE(a.isBelow(NodePath(inner, {first})));
    EXPECT_TRUE(a.isBelow(NodePath(root)));
    EXPECT_TRUE(a.isBelow(a));
    EXPECT_FALSE(a.isBelow(NodePath(second)));
    EXPECT_FALSE(a.isBelow(NodePath(inner, {second})));
    EXPECT_FALSE(NodePath(first).isBelow(a));
    static_cast<VisitSubTree &>(*first->getCore()).setSubTreeRoot(nullptr);
    EXPECT_FALSE(a.isIn(root));
    EXPECT_TRUE(b.isIn(root));
}

TEST(NodePath, OfNoNodeIsNowhere)
{
    NodePtr const root = node();
    NodePath const none;
    EXPECT_EQ(none, NodePath(nullptr, {root}));
    EXPECT_EQ(none.getNode(), nullptr);
    EXPECT_TRUE(none.getVisiting().empty());
    EXPECT_FALSE(none.isIn(root));
    EXPECT_FALSE(none.isBelow(NodePath(root)));
    EXPECT_FALSE(NodePath(root).isBelow(none));
    EXPECT_EQ(none.text(root), "");
}
} // namespace
} // namespace OSG::Test
