#include "OSGChildEdits.h"

#include <gmock/gmock.h>

#include "OperationScenes.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;

TEST(ChildEdits, TakeAwayAndAppendInTheOrderOfTheirComing)
{
    NodePtr const first = make_group();
    NodePtr const second = make_group();
    NodePtr const kept = make_group();
    NodePtr const gone = make_group({first, second});
    NodePtr const root = make_group({gone, kept, make_group()});
    ChildEdits edits;
    edits.sub(gone);
    edits.addChildrenOf(gone);
    edits.sub(root->getChild(2));
    edits.applyTo(root);
    EXPECT_THAT(children_of(root), ElementsAre(kept, first, second));
    EXPECT_EQ(gone->getNChildren(), 0u);
    EXPECT_EQ(first->getParent(), root);
}

TEST(ChildEdits, CountTheirNodesAsLongAsTheyLive)
{
    NodePtr const root = make_group({make_group({make_group()})});
    Node *const group = root->getChild(0);
    Node *const inner = group->getChild(0);
    {
        ChildEdits edits;
        edits.sub(group);
        edits.add(inner);
        EXPECT_EQ(inner->getRefCount(), 2);
        edits.applyTo(root);
        EXPECT_EQ(group->getRefCount(), 1);
    }
    EXPECT_THAT(children_of(root), ElementsAre(inner));
    EXPECT_EQ(inner->getRefCount(), 1);
}

TEST(ChildEdits, NoneChangeNothing)
{
    NodePtr const root = make_group({make_group()});
    ChildEdits().applyTo(root);
    EXPECT_EQ(root->getNChildren(), 1u);
}
} // namespace
} // namespace OSG::Test
