#include "NodePath.h"

#include <gtest/gtest.h>

#include "OSGGroup.h"
#include "OSGNode.h"
#include "OSGVisitSubTree.h"

namespace Tool
{
namespace
{
using NodePtr = OSG::UnrecordedRefPtr<OSG::Node>;
using VisitPtr = OSG::UnrecordedRefPtr<OSG::VisitSubTree>;

NodePtr node(std::vector<OSG::Node *> const &children = {})
{
    NodePtr result(OSG::Node::create());
    for(OSG::Node *child : children)
        result->addChild(child);
    return result;
}

NodePtr visit(OSG::Node *other)
{
    VisitPtr const core(OSG::VisitSubTree::create());
    core->setSubTreeRoot(other);
    NodePtr result(OSG::Node::create());
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
} // namespace
} // namespace Tool
