#include <new>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGChangeList.h"
#include "OSGChunkMaterial.h"
#include "OSGFieldContainerFactory.h"
#include "OSGMaterialChunk.h"
#include "OSGMaterialGroup.h"
#include "OSGMemManager.h"
#include "OSGName.h"
#include "OSGThread.h"
#include "OSGVisitSubTree.h"
#include "OsbScenes.h"

namespace OSG
{
namespace
{
using namespace OSG::Test;

UInt32 num_containers() { return FieldContainerFactoryBase::the()->getNumContainers(); }

/// A scene with everything that links: shared cores, a chain of materials, a visit of an ancestor.
NodePtr linked_scene()
{
    UnrecordedRefPtr<VisitSubTree> const visit(VisitSubTree::create());
    UnrecordedRefPtr<MaterialGroup> const group(MaterialGroup::create());
    UnrecordedRefPtr<ChunkMaterial> const material(ChunkMaterial::create());
    material->addChunk(UnrecordedRefPtr<MaterialChunk>(MaterialChunk::create()));
    group->setMaterial(material);
    NodePtr const root = make_group({make_node(visit), make_node(group), make_node(group)});
    setName(root, "a name that is longer than a short string");
    visit->setSubTreeRoot(root);
    return root;
}

void end_visits(Node *root)
{
    if(root != nullptr)
        dynamic_cast<VisitSubTree &>(*root->getChild(0)->getCore()).setSubTreeRoot(nullptr);
}

/// Calls `run` with a growing number of blocks until it reports success. A failed call must leave
/// nothing allocated. Returns the number of failures.
template <class Run>
int fail_until_done(Run run)
{
    EXPECT_TRUE(run());
    Thread::getCurrentChangeList()->commitChanges();
    UInt32 const containers = num_containers();
    UInt64 const bytes = get_mem_bytes();
    for(int failures = 0;; ++failures)
    {
        bool done = false;
        set_mem_limit(bytes + 16 * static_cast<UInt64>(failures) + 1);
        try
        {
            done = run();
        }
        catch(std::bad_alloc const &)
        {
        }
        set_mem_limit(0);
        Thread::getCurrentChangeList()->commitChanges();
        EXPECT_EQ(num_containers(), containers) << failures;
        EXPECT_EQ(get_mem_bytes(), bytes) << failures;
        if(done || testing::Test::HasFailure())
            return failures;
    }
}

TEST(OSBMemory, AReadThatRunsOutOfMemoryLeavesNothing)
{
    NodePtr const scene = linked_scene();
    std::string const bytes = osb_bytes(scene);
    end_visits(scene);
    EXPECT_GT(fail_until_done(
                  [&bytes]
                  {
                      NodePtr const back = osb_scene(bytes);
                      end_visits(back);
                      return back != nullptr;
                  }),
              100);
}

TEST(OSBMemory, AWriteThatRunsOutOfMemoryLeavesNothing)
{
    NodePtr const scene = linked_scene();
    EXPECT_GT(fail_until_done(
                  [&scene]
                  {
                      // A stream does not tell why it failed.
                      LogCapture const silence;
                      return !osb_bytes(scene).empty();
                  }),
              100);
    end_visits(scene);
}
} // namespace
} // namespace OSG
