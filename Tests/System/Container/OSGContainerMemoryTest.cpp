/// \file
/// Containers at the end of memory.

#include <new>

#include <gtest/gtest.h>

#include "OSGChangeList.h"
#include "OSGDeepClone.h"
#include "OSGFieldContainerFactory.h"
#include "OSGMemManager.h"
#include "OSGName.h"
#include "OSGNode.h"
#include "OSGThread.h"
#include "OSGVisitSubTree.h"

namespace OSG::Test
{
namespace
{
using NodePtr = UnrecordedRefPtr<Node>;

UInt32 num_containers() { return FieldContainerFactoryBase::the()->getNumContainers(); }

/// Calls `make` with more and more room until it succeeds; after each failure nothing is left.
/// Gives the number of failures.
template <class Make>
int fail_until_made(Make make)
{
    make();
    Thread::getCurrentChangeList()->commitChanges();
    UInt32 const containers = num_containers();
    UInt64 const bytes = get_mem_bytes();
    for(int failures = 0;; ++failures)
    {
        set_mem_limit(bytes + 8 * static_cast<UInt64>(failures) + 1);
        bool made = false;
        try
        {
            make();
            made = true;
        }
        catch(std::bad_alloc const &)
        {
        }
        set_mem_limit(0);
        Thread::getCurrentChangeList()->commitChanges();
        EXPECT_EQ(num_containers(), containers);
        EXPECT_EQ(get_mem_bytes(), bytes);
        if(made || testing::Test::HasFailure())
            return failures;
    }
}
} // namespace

TEST(ContainerMemory, AnObjectThatCannotBeMadeLeavesNothing)
{
    EXPECT_GT(fail_until_made([] { NodePtr const node(Node::create()); }), 5);
}

TEST(ContainerMemory, ATreeThatCannotBeMadeLeavesNothing)
{
    EXPECT_GT(fail_until_made(
                  []
                  {
                      NodePtr const root(Node::create());
                      for(int i = 0; i < 5; ++i)
                      {
                          NodePtr const child(Node::create());
                          setName(child, "child");
                          root->addChild(child);
                      }
                  }),
              50);
}

TEST(ContainerMemory, ACloneThatCannotBeMadeLeavesNothing)
{
    UnrecordedRefPtr<VisitSubTree> const visit(VisitSubTree::create());
    NodePtr const root(Node::create());
    for(int i = 0; i < 3; ++i)
    {
        NodePtr const child(Node::create());
        setName(child, "a name that is longer than a short string");
        child->setCore(visit);
        root->addChild(child);
    }
    visit->setSubTreeRoot(root);
    EXPECT_GT(fail_until_made(
                  [&root]
                  {
                      UnrecordedRefPtr<FieldContainer> const copy(deepClone(root));
                      Node *const child = dynamic_cast<Node &>(*copy).getChild(0);
                      dynamic_cast<VisitSubTree &>(*child->getCore()).setSubTreeRoot(nullptr);
                  }),
              50);
    visit->setSubTreeRoot(nullptr);
}

TEST(ContainerMemory, AnEndTakesNoMemory)
{
    UInt32 const containers = num_containers();
    NodePtr root(Node::create());
    for(int i = 0; i < 20000; ++i)
        root->addChild(NodePtr(Node::create()));
    Thread::getCurrentChangeList()->commitChanges();
    set_mem_limit(1);
    root = nullptr;
    set_mem_limit(0);
    EXPECT_EQ(num_containers(), containers);
}

TEST(ContainerMemory, IdsComeBackFirstInFirstOut)
{
    // Enough for the free ids of earlier tests to be given first.
    std::vector<NodePtr> all;
    UInt32 newest = 0;
    for(;;)
    {
        all.emplace_back(Node::create());
        if(all.back()->getId() == newest + 1 && all.size() > 50000)
            break;
        newest = all.back()->getId();
    }
    NodePtr first(all[10]);
    NodePtr second(all[20]);
    NodePtr third(all[15]);
    UInt32 const ids[] = {first->getId(), second->getId(), third->getId()};
    all[10] = all[20] = all[15] = nullptr;
    first = nullptr;
    second = nullptr;
    third = nullptr;
    for(UInt32 id : ids)
    {
        all.emplace_back(Node::create());
        EXPECT_EQ(all.back()->getId(), id);
        EXPECT_EQ(FieldContainerFactoryBase::the()->getContainer(id), all.back());
    }
}
} // namespace OSG::Test
