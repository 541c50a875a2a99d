// Operations that take whole levels up at once, compared with the same operations level by level.

#include <gtest/gtest.h>

#include "LevelByLevel.h"
#include "OSGChangeList.h"
#include "OSGGrpMergeGraphOp.h"
#include "OSGMemManager.h"
#include "OSGMrgGraphOp.h"
#include "OSGThread.h"

namespace OSG::Test
{
namespace
{
constexpr int NumScenes = 4000;

template <class Operation>
UnrecordedRefPtr<Operation> operation_with_lists(LevelScene &scene)
{
    UnrecordedRefPtr<Operation> const operation(Operation::create());
    for(int i = 0; i < 3; ++i)
    {
        operation->addToExcludeList(scene.anyNode());
        operation->addToPreserveList(scene.anyNode());
    }
    return operation;
}

template <class Operation>
class LevelsOf : public testing::Test
{
};
using Operations = testing::Types<GrpMergeGraphOp, MrgGraphOp>;
TYPED_TEST_SUITE(LevelsOf, Operations);

TYPED_TEST(LevelsOf, RandomScenesComeUpAsTheyDoLevelByLevel)
{
    int changed = 0;
    for(int seed = 1; seed <= NumScenes; ++seed)
    {
        LevelScene quick(seed);
        LevelScene slow(seed);
        std::string const before = quick.text();
        // One walk: `traverse` of Mrg would make several, and put the exclude list aside.
        auto const operation = operation_with_lists<TypeParam>(quick);
        auto const other = operation_with_lists<TypeParam>(slow);
        quick.letGo();
        operation->GraphOp::traverse(quick.root());
        run_level_by_level(*other, slow.root());
        ASSERT_EQ(quick.text(), slow.text()) << seed << ": " << before;
        changed += quick.text() != before ? 1 : 0;
    }
    EXPECT_GT(changed, NumScenes / 4);
}

TYPED_TEST(LevelsOf, MemoryThatRunsOutLeavesASceneThatASecondRunFinishes)
{
    int failures = 0;
    for(int seed = 1; seed <= 60; ++seed)
    {
        LevelScene whole(seed);
        std::string const before = whole.text();
        UnrecordedRefPtr<TypeParam> const once(TypeParam::create());
        once->traverse(whole.root());
        for(UInt64 room = 64; room < 16384; room += 64)
        {
            LevelScene scene(seed);
            scene.letGo();
            UnrecordedRefPtr<TypeParam> const operation(TypeParam::create());
            set_mem_limit(get_mem_bytes() + room);
            bool failed = false;
            try
            {
                operation->traverse(scene.root());
            }
            catch(std::bad_alloc const &)
            {
                failed = true;
            }
            set_mem_limit(0);
            if(!failed)
                break;
            ++failures;
            operation->traverse(scene.root());
            // The order of the nodes may tell where the first run ended.
            ASSERT_EQ(scene.places(), whole.places()) << seed << ' ' << room << before;
        }
    }
    EXPECT_GT(failures, 100);
}

/// A chain of `levels` nodes of one kind, each with its own leaf.
template <class Make>
NodePtr chain_with_leaves(UInt32 levels, Make make_level)
{
    NodePtr top = make_level();
    for(UInt32 i = 0; i < levels; ++i)
    {
        NodePtr const above = make_level();
        above->addChild(make_triangle());
        above->addChild(top);
        top = above;
    }
    return make_group({top});
}

TYPED_TEST(LevelsOf, ALeafAtEachOfAHundredThousandGroupsMovesOnce)
{
    constexpr UInt32 Levels = 100000;
    NodePtr const root = chain_with_leaves(Levels, [] { return make_group(); });
    EXPECT_TRUE(run<TypeParam>(root));
    EXPECT_EQ(root->getNChildren(), Levels);
}

TEST(Mrg, ALeafAtEachOfAHundredThousandMaterialGroupsMovesOnce)
{
    constexpr UInt32 Levels = 100000;
    auto const outer = make_material();
    NodePtr const root = chain_with_leaves(Levels, [] { return make<MaterialGroup>(); });
    core_of<MaterialGroup>(root->getChild(0))->setMaterial(outer);
    EXPECT_TRUE(run<MrgGraphOp>(root));
    ASSERT_EQ(root->getNChildren(), Levels);
    for(Node *leaf : children_of(root))
        ASSERT_EQ(core_of<Geometry>(leaf)->getMaterial(), outer);
}

TEST(Mrg, ALeafAtEachTransformIsCopiedOnceAndThenMovedInPlace)
{
    constexpr UInt32 Levels = 300;
    NodePtr const root =
        chain_with_leaves(Levels, [] { return make_transform(translation(1, 0, 0)); });
    UInt64 const before = get_mem_bytes();
    EXPECT_TRUE(run<MrgGraphOp>(root));
    ASSERT_EQ(root->getNChildren(), Levels);
    for(UInt32 i = 0; i < Levels; ++i)
    {
        auto const *const positions = dynamic_cast<GeoPnt3fProperty const *>(
            core_of<Geometry>(root->getChild(i))->getPositions());
        ASSERT_EQ(positions->getValues()[0], Pnt3f(Real32(i + 1), 0, 0)) << i;
    }
    Thread::getCurrentChangeList()->commitChanges();
    EXPECT_LT(get_mem_bytes(), before + Levels * 4096);
}
} // namespace
} // namespace OSG::Test
