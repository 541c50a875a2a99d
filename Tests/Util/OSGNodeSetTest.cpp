#include "OSGNodeSet.h"

#include <gmock/gmock.h>

#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;

TEST(NodeSet, KeepsEachNodeOnceInTheOrderOfTheirComing)
{
    NodePtr const a = make_group();
    NodePtr const b = make_group();
    NodeSet set;
    set.add(b);
    set.add(a);
    set.add(b);
    set.add(nullptr);
    EXPECT_THAT(set.getList(), ElementsAre(b, a));
    EXPECT_TRUE(set.contains(a));
    EXPECT_FALSE(set.contains(nullptr));
    EXPECT_FALSE(set.contains(make_group()));
}

TEST(NodeSet, ClearAndSwapTakeListAndKnowledgeAlong)
{
    NodePtr const a = make_group();
    NodePtr const b = make_group();
    NodeSet first;
    first.add(a);
    NodeSet second;
    second.add(b);
    first.swap(second);
    EXPECT_TRUE(first.contains(b) && !first.contains(a));
    first.clear();
    EXPECT_TRUE(first.empty());
    EXPECT_FALSE(first.contains(b));
    EXPECT_THAT(second.getList(), ElementsAre(a));
}

TEST(NodeSet, DoesNotCountItsNodes)
{
    NodePtr const node = make_group();
    NodeSet set;
    set.add(node);
    EXPECT_EQ(node->getRefCount(), 1);
}
} // namespace
} // namespace OSG::Test
