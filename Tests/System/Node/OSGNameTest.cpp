#include "OSGName.h"

#include <gtest/gtest.h>

#include "OSGNode.h"

namespace OSG
{
namespace
{
using NodePtr = UnrecordedRefPtr<Node>;

TEST(Name, IsReadBackAsItWasGiven)
{
    NodePtr const node(Node::create());
    setName(node, "pump");
    EXPECT_STREQ(getName(node), "pump");
    setName(node, std::string("valve"));
    EXPECT_STREQ(getName(node), "valve");
}

TEST(Name, NullTakesTheNameAway)
{
    NodePtr const node(Node::create());
    setName(node, "pump");
    setName(node, static_cast<char const *>(nullptr));
    EXPECT_EQ(getName(node), nullptr);
    EXPECT_EQ(node->getMFAttachments()->size(), 0u);
}

TEST(Name, OfNothingIsNull)
{
    EXPECT_EQ(getName(nullptr), nullptr);
    setName(nullptr, "pump");
}

TEST(Name, ARenamedCopyLeavesTheNameOfItsSource)
{
    NodePtr const node(Node::create());
    setName(node, "pump");
    TransitPtr<FieldContainer> const copy = node->shallowCopy();
    Node *const copied = dynamic_cast<Node *>(copy.get());
    EXPECT_STREQ(getName(copied), "pump");
    setName(copied, "valve");
    EXPECT_STREQ(getName(node), "pump");
}
} // namespace
} // namespace OSG
