#include "OSGNode.h"

#include <gtest/gtest.h>

#include "OSGName.h"

namespace OSG
{
namespace
{
using NodePtr = UnrecordedRefPtr<Node>;

TEST(Node, ANewNodeHasNeitherCoreNorChildrenNorName)
{
    NodePtr const node(Node::create());
    EXPECT_EQ(node->getCore(), nullptr);
    EXPECT_EQ(node->getNChildren(), 0u);
    EXPECT_EQ(getName(node), nullptr);
}

TEST(Node, AChildThatHasAParentLeavesItFirst)
{
    NodePtr const first(Node::create());
    NodePtr const second(Node::create());
    NodePtr const child(Node::create());
    first->addChild(child);
    second->addChild(child);
    EXPECT_EQ(first->getNChildren(), 0u);
    ASSERT_EQ(second->getNChildren(), 1u);
    EXPECT_EQ(child->getParent(), second);
    EXPECT_EQ(child->getRefCount(), 2);
}
} // namespace
} // namespace OSG
