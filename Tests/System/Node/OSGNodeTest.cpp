#include "OSGNode.h"

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGBinaryDataHandler.h"
#include "OSGBlendChunk.h"
#include "OSGFieldContainerFactory.h"
#include "OSGMaterialChunk.h"
#include "OSGName.h"

namespace OSG
{
namespace
{
using NodePtr = UnrecordedRefPtr<Node>;

UInt32 containers() { return FieldContainerFactoryBase::the()->getNumContainers(); }

NodePtr chain(UInt32 depth)
{
    NodePtr const root(Node::create());
    Node *deepest = root;
    for(UInt32 i = 1; i < depth; ++i)
    {
        NodePtr const next(Node::create());
        deepest->addChild(next);
        deepest = next;
    }
    return root;
}

TEST(Node, ANewNodeHasNeitherCoreNorChildrenNorName)
{
    NodePtr const node(Node::create());
    EXPECT_EQ(node->getCore(), nullptr);
    EXPECT_EQ(node->getNChildren(), 0u);
    EXPECT_EQ(getName(node), nullptr);
    EXPECT_EQ(node->getParent(), nullptr);
    EXPECT_EQ(node->getTravMask(), 0xFFFFFFFFu);
    EXPECT_FALSE(node->getVolume().isValid());
}

TEST(Node, AddChildAppendsAsTheLastOne)
{
    NodePtr const root(Node::create());
    NodePtr const first(Node::create());
    NodePtr const second(Node::create());
    root->addChild(first);
    root->addChild(second);
    EXPECT_EQ(root->getChild(0), first);
    EXPECT_EQ(root->getChild(1), second);
    EXPECT_EQ(*root->getMFChildren()->begin(), first);
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

TEST(Node, AChildAddedAgainToItsParentBecomesTheLastOne)
{
    NodePtr const root(Node::create());
    NodePtr const first(Node::create());
    NodePtr const second(Node::create());
    root->addChild(first);
    root->addChild(second);
    root->addChild(first);
    ASSERT_EQ(root->getNChildren(), 2u);
    EXPECT_EQ(root->getChild(0), second);
    EXPECT_EQ(root->getChild(1), first);
}

TEST(Node, NullItselfAndAncestorsAreRefusedAsChildrenWithAWarning)
{
    NodePtr const root = chain(3);
    Node *const leaf = root->getChild(0)->getChild(0);
    OSG::Test::LogCapture log;
    leaf->addChild(nullptr);
    leaf->addChild(leaf);
    leaf->addChild(root);
    EXPECT_EQ(leaf->getNChildren(), 0u);
    EXPECT_EQ(root->getParent(), nullptr);
    EXPECT_EQ(log.texts(LOG_WARNING).size(), 3u);
}

TEST(Node, SubChildClosesUpAndReleasesTheChild)
{
    NodePtr const root(Node::create());
    UInt32 const before = containers();
    for(int i = 0; i < 3; ++i)
        root->addChild(NodePtr(Node::create()));
    Node *const last = root->getChild(2);
    root->subChild(1u);
    ASSERT_EQ(root->getNChildren(), 2u);
    EXPECT_EQ(root->getChild(1), last);
    EXPECT_EQ(containers(), before + 2);
    root->subChild(last);
    EXPECT_EQ(containers(), before + 1);
}

TEST(Node, SubChildOfWhatIsNoChildDoesNothing)
{
    NodePtr const root = chain(2);
    NodePtr const other(Node::create());
    root->subChild(7u);
    root->subChild(other);
    root->subChild(static_cast<Node *>(nullptr));
    EXPECT_EQ(root->getNChildren(), 1u);
    EXPECT_EQ(root->findChild(other), -1);
}

TEST(Node, ChildrenAreFoundInAnyOrderOfTakingThemAway)
{
    for(int order = 0; order < 3; ++order)
    {
        NodePtr const root(Node::create());
        std::vector<NodePtr> children;
        for(int i = 0; i < 200; ++i)
        {
            children.push_back(NodePtr(Node::create()));
            root->addChild(children.back());
        }
        for(std::size_t i = 0; i < children.size(); ++i)
        {
            std::size_t const at = order == 0   ? i
                                   : order == 1 ? children.size() - 1 - i
                                                : i * 77 % children.size();
            ASSERT_GE(root->findChild(children[at]), 0);
            EXPECT_EQ(root->getChild(root->findChild(children[at])), children[at]);
            root->subChild(children[at]);
        }
        EXPECT_EQ(root->getNChildren(), 0u);
    }
}

TEST(Node, AChainOfAHundredThousandNodesEndsWithoutRecursion)
{
    UInt32 const before = containers();
    {
        NodePtr const root = chain(100000);
        EXPECT_EQ(containers(), before + 100000);
    }
    EXPECT_EQ(containers(), before);
}

TEST(Node, TheVolumeOfAChainOfAHundredThousandNodesIsUpdated)
{
    NodePtr const root = chain(100000);
    root->updateVolume();
    EXPECT_TRUE(root->getVolume().isValid());
    EXPECT_TRUE(root->getVolume().isEmpty());
}

TEST(Node, AChangeBelowMarksTheVolumesOfAllAncestors)
{
    NodePtr const root = chain(4);
    root->updateVolume();
    Node *const leaf = root->getChild(0)->getChild(0)->getChild(0);
    leaf->invalidateVolume();
    for(Node *node = leaf; node != nullptr; node = node->getParent())
        EXPECT_FALSE(node->getVolume().isValid());
}

TEST(Node, AddingAChildMarksTheVolume)
{
    NodePtr const root(Node::create());
    root->updateVolume();
    root->addChild(NodePtr(Node::create()));
    EXPECT_FALSE(root->getVolume().isValid());
}

TEST(Node, ANodeIsFoundByItsNameAnywhereInTheSubtree)
{
    NodePtr const root = chain(3);
    Node *const leaf = root->getChild(0)->getChild(0);
    setName(leaf, "leaf");
    EXPECT_EQ(root->findNamedComponent("leaf"), leaf);
    EXPECT_EQ(root->findNamedComponent("other"), nullptr);
}

TEST(Node, ACopyHasTheMaskButNeitherChildrenNorParent)
{
    NodePtr const root = chain(3);
    Node *const middle = root->getChild(0);
    middle->setTravMask(5);
    TransitPtr<FieldContainer> const copy = middle->shallowCopy();
    Node *const copied = dynamic_cast<Node *>(copy.get());
    ASSERT_NE(copied, nullptr);
    EXPECT_EQ(copied->getTravMask(), 5u);
    EXPECT_EQ(copied->getNChildren(), 0u);
    EXPECT_EQ(copied->getParent(), nullptr);
}

TEST(Node, AChildOutlivesItsParentAsARoot)
{
    NodePtr child;
    {
        NodePtr const root = chain(2);
        child = root->getChild(0);
    }
    EXPECT_EQ(child->getParent(), nullptr);
    EXPECT_EQ(child->getRefCount(), 1);
}

TEST(Node, ChildrenThatComeAsBytesAreLinkedAsByAnybodyElse)
{
    NodePtr const source = chain(2);
    NodePtr const child(source->getChild(0));
    MemoryBinaryDataHandler bytes;
    source->copyToBin(bytes, Node::ChildrenFieldMask);
    NodePtr const target = chain(2);
    target->copyFromBin(bytes, Node::ChildrenFieldMask);
    ASSERT_EQ(target->getNChildren(), 1u);
    EXPECT_EQ(target->getChild(0), child);
    EXPECT_EQ(child->getParent(), target);
    EXPECT_EQ(source->getNChildren(), 0u);
}

TEST(Node, AttachmentsWithoutAGroupStandBesideOneAnotherOneForEachClass)
{
    NodePtr const node(Node::create());
    UnrecordedRefPtr<BlendChunk> const blend(BlendChunk::create());
    UnrecordedRefPtr<MaterialChunk> const first(MaterialChunk::create());
    UnrecordedRefPtr<MaterialChunk> const second(MaterialChunk::create());
    node->addAttachment(blend);
    node->addAttachment(first);
    node->addAttachment(second);
    ASSERT_EQ(node->getMFAttachments()->size(), 2u);
    EXPECT_EQ(node->getAttachments(0), blend);
    EXPECT_EQ(node->getAttachments(1), second);
}

TEST(Node, UnlinkChildTakesOutOfTheFieldThatIsNamed)
{
    NodePtr const root = chain(2);
    NodePtr const child(root->getChild(0));
    EXPECT_FALSE(root->unlinkChild(child, Node::CoreFieldId));
    EXPECT_TRUE(root->unlinkChild(child, Node::ChildrenFieldId));
    EXPECT_EQ(root->getNChildren(), 0u);
}
} // namespace
} // namespace OSG
