#include "OSGSimplifyRenderEngineGraphOp.h"

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "OSGChunkMaterial.h"
#include "OSGGraphOpFactory.h"
#include "OSGGroupingStage.h"
#include "OSGMaterialChunk.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGName.h"
#include "OSGSwitch.h"
#include "OSGSwitchMaterial.h"
#include "OperationScenes.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;
using Simplify = SimplifyRenderEngineGraphOp;
using OperationPtr = UnrecordedRefPtr<Simplify>;
using MaterialPtr = UnrecordedRefPtr<Material>;

NodePtr make_switch(Int32 choice, Children const &children)
{
    NodePtr const node = make<Switch>(children);
    core_of<Switch>(node)->setChoice(choice);
    return node;
}

MaterialPtr make_switch_material(UInt32 choice, std::vector<MaterialPtr> const &materials)
{
    UnrecordedRefPtr<SwitchMaterial> const material(SwitchMaterial::create());
    for(MaterialPtr const &entry : materials)
        material->editMFMaterials()->push_back(entry);
    material->setChoice(choice);
    return material.get();
}

MaterialPtr make_chunk_material(bool withChunk)
{
    UnrecordedRefPtr<ChunkMaterial> const material(ChunkMaterial::create());
    UnrecordedRefPtr<MaterialChunk> const chunk(MaterialChunk::create());
    if(withChunk)
        material->addChunk(chunk);
    return material.get();
}

NodePtr make_stage() { return make<GroupingStage>(); }

bool is_plain_group(Node const *node)
{
    return node->getCore() != nullptr && node->getCore()->getType() == Group::getClassType();
}

// --- as an operation ---

TEST(Simplify, IsRegisteredUnderItsName)
{
    UnrecordedRefPtr<GraphOp> const made(GraphOpFactoryBase::the()->create("SimplifyRenderEngine"));
    EXPECT_NE(dynamic_cast<Simplify *>(made.get()), nullptr);
    EXPECT_STREQ(Simplify::getClassname(), "SimplifyRenderEngineGraphOp");
}

TEST(Simplify, SaysWhatItDoes)
{
    OperationPtr const operation(Simplify::create());
    EXPECT_EQ(operation->usage(), "SimplifyRenderEngine: Handles switch and multiswitch cores and "
                                  "name attachments.\nParams: name (type, default)\n");
}

TEST(Simplify, AWarningAboutParametersHasItsFullStopBehindTheLine)
{
    OperationPtr const operation(Simplify::create());
    LogCapture const log;
    operation->setParams("");
    operation->setParams("fast");
    EXPECT_THAT(log.texts(LOG_WARNING),
                ElementsAre("SimplifyRenderEngineGraphOp doesn't have parameters 'fast'\n."));
}

TEST(Simplify, AClonedOneHasNoLists)
{
    OperationPtr const operation(Simplify::create());
    NodePtr const node = make_group();
    operation->addToExcludeList(node);
    UnrecordedRefPtr<GraphOp> const cloned(operation->clone());
    EXPECT_EQ(cloned->getRefCount(), 1);
    EXPECT_FALSE(cloned->isInExcludeList(node));
    OperationPtr const copy(new Simplify(*operation));
    EXPECT_TRUE(copy->isInExcludeList(node));
}

// --- names and lists ---

TEST(Simplify, NamesOfNodesGoAndThoseOfCoresStay)
{
    NodePtr const shape = make_triangle();
    setName(shape, "shape");
    setName(shape->getCore(), "core");
    NodePtr const root = make_group({shape});
    setName(root, "root");
    EXPECT_TRUE(run<Simplify>(root));
    EXPECT_EQ(getName(root), nullptr);
    EXPECT_EQ(getName(shape), nullptr);
    EXPECT_STREQ(getName(shape->getCore()), "core");
}

TEST(Simplify, AnExcludedNodeKeepsItsNameAndAllBelowIt)
{
    NodePtr const below = make_group();
    setName(below, "below");
    NodePtr const excluded = make_switch(-1, {below});
    setName(excluded, "excluded");
    NodePtr const root = make_group({excluded});
    OperationPtr const operation(Simplify::create());
    operation->addToExcludeList(excluded);
    operation->traverse(root);
    EXPECT_THAT(children_of(root), ElementsAre(excluded));
    EXPECT_THAT(children_of(excluded), ElementsAre(below));
    EXPECT_STREQ(getName(excluded), "excluded");
    EXPECT_STREQ(getName(below), "below");
    EXPECT_EQ(operation->traverseEnter(excluded), ActionBase::Skip);
    EXPECT_EQ(operation->traverseLeave(excluded, ActionBase::Continue), ActionBase::Skip);
    EXPECT_EQ(operation->traverseLeave(root, ActionBase::Skip), ActionBase::Continue);
}

TEST(Simplify, APreservedNodeKeepsPlaceAndCoreAndLosesItsName)
{
    NodePtr const preserved = make_switch(0, {make_triangle(), make_group()});
    setName(preserved, "preserved");
    NodePtr const root = make_group({preserved});
    OperationPtr const operation(Simplify::create());
    operation->addToPreserveList(preserved);
    operation->traverse(root);
    EXPECT_THAT(children_of(root), ElementsAre(preserved));
    EXPECT_NE(core_of<Switch>(preserved), nullptr);
    EXPECT_EQ(preserved->getNChildren(), 2u);
    EXPECT_EQ(getName(preserved), nullptr);
}

TEST(Simplify, ThePreservedAlsoKeepTheirMaterial)
{
    NodePtr const preserved = make_triangle();
    MaterialPtr const material = make_switch_material(0, {make_material().get()});
    core_of<Geometry>(preserved)->setMaterial(material);
    NodePtr const root = make_group({preserved});
    OperationPtr const operation(Simplify::create());
    operation->addToPreserveList(preserved);
    operation->traverse(root);
    EXPECT_EQ(core_of<Geometry>(preserved)->getMaterial(), material);
}

// --- Switch ---

TEST(Simplify, ASwitchWithoutAChoiceLeavesNothing)
{
    NodePtr const root = make_group({make_switch(-1, {make_triangle()}), make_triangle()});
    Node *const kept = root->getChild(1);
    run<Simplify>(root);
    EXPECT_THAT(children_of(root), ElementsAre(kept));
}

TEST(Simplify, ASwitchOfAllChildrenBecomesAGroupOfThemInReverse)
{
    NodePtr const a = make_triangle();
    NodePtr const b = make_triangle();
    NodePtr const c = make_triangle();
    NodePtr const root = make_group({make_switch(-2, {a, b, c}), make_triangle()});
    run<Simplify>(root);
    ASSERT_EQ(root->getNChildren(), 2u);
    Node const *const group = root->getChild(1);
    EXPECT_TRUE(is_plain_group(group));
    EXPECT_THAT(children_of(group), ElementsAre(c, b, a));
}

TEST(Simplify, ASwitchWithAChoiceBecomesAGroupOfIt)
{
    NodePtr const chosen = make_triangle();
    NodePtr const other = make_triangle();
    NodePtr const root = make_group({make_switch(1, {other, chosen, make_triangle()})});
    setName(root->getChild(0), "switch");
    run<Simplify>(root);
    ASSERT_EQ(root->getNChildren(), 1u);
    EXPECT_TRUE(is_plain_group(root->getChild(0)));
    EXPECT_EQ(getName(root->getChild(0)), nullptr);
    EXPECT_THAT(children_of(root->getChild(0)), ElementsAre(chosen));
    EXPECT_EQ(other->getParent(), nullptr) << "it left with the switch, which has ended";
}

TEST(Simplify, ASwitchThatAHostHoldsKeepsWhatWasNotChosen)
{
    NodePtr const a = make_triangle();
    NodePtr const b = make_triangle();
    NodePtr const none = make_switch(-1, {a});
    NodePtr const one = make_switch(0, {make_triangle(), b});
    NodePtr const root = make_group({none, one});
    run<Simplify>(root);
    EXPECT_THAT(children_of(none), ElementsAre(a));
    EXPECT_THAT(children_of(one), ElementsAre(b));
}

TEST(Simplify, ASwitchWithoutChildrenOfWhichAllAreShownLeavesNothing)
{
    NodePtr const root = make_group({make_switch(-2, {})});
    run<Simplify>(root);
    EXPECT_EQ(root->getNChildren(), 0u);
}

TEST(Simplify, SwitchesInSwitchesAreResolvedFromBelow)
{
    NodePtr const shape = make_triangle();
    NodePtr const root = make_group({make_switch(0, {make_switch(0, {shape})})});
    run<Simplify>(root);
    Node const *const outer = root->getChild(0);
    ASSERT_EQ(outer->getNChildren(), 1u);
    EXPECT_TRUE(is_plain_group(outer->getChild(0)));
    EXPECT_THAT(children_of(outer->getChild(0)), ElementsAre(shape));
}

TEST(Simplify, AnEmptyGroupBelowASwitchStaysAsAPlaceholder)
{
    NodePtr const placeholder = make_group();
    NodePtr const shape = make_triangle();
    NodePtr const root = make_switch(1, {placeholder, shape});
    run<Simplify>(root);
    EXPECT_THAT(children_of(root), ElementsAre(placeholder, shape));
    NodePtr const multi = make_multi_switch(-3, {}, {placeholder});
    run<Simplify>(multi);
    EXPECT_THAT(children_of(multi), ElementsAre(placeholder));
}

TEST(Simplify, ARootThatIsASwitchStays)
{
    NodePtr const root = make_switch(0, {make_switch(-1, {})});
    run<Simplify>(root);
    EXPECT_NE(core_of<Switch>(root), nullptr);
    EXPECT_EQ(root->getNChildren(), 0u);
}

// --- MultiSwitch ---

struct MultiCase
{
    char const *name;
    Int32 mode;
    std::vector<UInt32> choices;
    std::vector<std::size_t> shown; // of the children 0 to 3
};

void PrintTo(MultiCase const &row, std::ostream *out) { *out << row.name; }

class MultiSwitches : public testing::TestWithParam<MultiCase>
{
};

TEST_P(MultiSwitches, BecomeAGroupOfWhatTheyShow)
{
    Children const all = {make_triangle(), make_triangle(), make_triangle(), make_triangle()};
    NodePtr const root = make_group({make_multi_switch(GetParam().mode, GetParam().choices, all)});
    run<Simplify>(root);
    std::vector<Node *> expected;
    for(std::size_t const i : GetParam().shown)
        expected.push_back(all[i]);
    ASSERT_EQ(root->getNChildren(), expected.empty() ? 0u : 1u);
    if(expected.empty())
        return;
    EXPECT_TRUE(is_plain_group(root->getChild(0)));
    EXPECT_EQ(children_of(root->getChild(0)), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Simplify, MultiSwitches,
    testing::Values(MultiCase{"AllInReverse", -3, {}, {3, 2, 1, 0}},
                    MultiCase{"ChoicesFromTheLastToTheFirst", -1, {0, 2, 3}, {3, 2, 0}},
                    MultiCase{"NoChoices", -1, {}, {}}, MultiCase{"None", -2, {0, 1}, {}},
                    MultiCase{"AnyOtherMode", 2, {0, 1}, {}},
                    // Child 0 goes first, and child 2 stands at place 1 by then.
                    MultiCase{"DescendingChoicesTakeOthers", -1, {1, 0}, {0, 2}},
                    MultiCase{"TwiceTakesTheNextOne", -1, {1, 1}, {1, 2}}),
    [](auto const &row) { return std::string(row.param.name); });

TEST(Simplify, AGroupingStageThatIsShownGoesWithItsSwitch)
{
    NodePtr const shape = make_triangle();
    for(Int32 const mode : {-3, -1})
    {
        NodePtr const root = make_group({make_multi_switch(mode, {0, 1}, {make_stage(), shape})});
        run<Simplify>(root);
        ASSERT_EQ(root->getNChildren(), 1u);
        EXPECT_THAT(children_of(root->getChild(0)), ElementsAre(shape));
    }
    NodePtr const root = make_group({make_multi_switch(-3, {}, {make_stage()})});
    run<Simplify>(root);
    EXPECT_EQ(root->getNChildren(), 0u);
}

TEST(Simplify, AGroupingStageThatASwitchChoosesStays)
{
    NodePtr const stage = make_stage();
    NodePtr const root = make_group({make_switch(0, {stage})});
    run<Simplify>(root);
    EXPECT_EQ(stage->getParent(), root->getChild(0));
}

// --- materials ---

TEST(Simplify, TheChosenMaterialComesInPlaceOfASwitchMaterial)
{
    MaterialPtr const first = make_material().get();
    MaterialPtr const second = make_material().get();
    NodePtr const shape = make_triangle();
    NodePtr const group = make<MaterialGroup>({make_triangle()});
    NodePtr const override = make<MaterialChunkOverrideGroup>({make_triangle()});
    core_of<Geometry>(shape)->setMaterial(make_switch_material(0, {first, second}));
    core_of<MaterialGroup>(group)->setMaterial(make_switch_material(1, {first, second}));
    core_of<MaterialChunkOverrideGroup>(override)->setMaterial(
        make_switch_material(1, {first, second}));
    NodePtr const root = make_group({shape, group, override});
    run<Simplify>(root);
    EXPECT_THAT(children_of(root), ElementsAre(shape, group, override));
    EXPECT_EQ(core_of<Geometry>(shape)->getMaterial(), first);
    EXPECT_EQ(core_of<MaterialGroup>(group)->getMaterial(), second);
    EXPECT_EQ(core_of<MaterialChunkOverrideGroup>(override)->getMaterial(), second);
}

TEST(Simplify, ASwitchMaterialInAnotherStaysForTheNextTime)
{
    MaterialPtr const inner = make_switch_material(0, {make_material().get()});
    NodePtr const shape = make_triangle();
    core_of<Geometry>(shape)->setMaterial(make_switch_material(0, {inner}));
    NodePtr const root = make_group({shape});
    run<Simplify>(root);
    EXPECT_EQ(core_of<Geometry>(shape)->getMaterial(), inner);
}

TEST(Simplify, AMaterialThatIsChosenAndNullIsNone)
{
    NodePtr const shape = make<Geometry>();
    core_of<Geometry>(shape)->setMaterial(make_switch_material(0, {nullptr}));
    NodePtr const root = make_group({shape});
    run<Simplify>(root);
    EXPECT_THAT(children_of(root), ElementsAre(shape)) << "it carried a material when it was seen";
    EXPECT_EQ(core_of<Geometry>(shape)->getMaterial(), nullptr);
}

TEST(Simplify, ACoreWhoseMaterialHasNoChunksBecomesAGroup)
{
    NodePtr const shape = make_triangle();
    NodePtr const group = make<MaterialGroup>({make_triangle()});
    core_of<Geometry>(shape)->setMaterial(make_chunk_material(false));
    core_of<MaterialGroup>(group)->setMaterial(
        make_switch_material(0, {make_chunk_material(false)}));
    NodePtr const root = make_group({shape, group});
    run<Simplify>(root);
    EXPECT_THAT(children_of(root), ElementsAre(shape, group));
    EXPECT_TRUE(is_plain_group(shape));
    EXPECT_TRUE(is_plain_group(group));
    EXPECT_EQ(group->getNChildren(), 1u);
}

TEST(Simplify, ACoreWhoseMaterialHasChunksStays)
{
    NodePtr const shape = make_triangle();
    core_of<Geometry>(shape)->setMaterial(make_chunk_material(true));
    NodePtr const root = make_group({shape});
    run<Simplify>(root);
    EXPECT_NE(core_of<Geometry>(shape), nullptr);
}

TEST(Simplify, ASharedCoreIsReplacedForEachOfItsNodes)
{
    NodePtr const first = make_triangle();
    core_of<Geometry>(first)->setMaterial(make_chunk_material(false));
    NodePtr const second = make_node(first->getCore());
    NodePtr const outside = make_node(first->getCore());
    NodePtr const root = make_group({first, second});
    run<Simplify>(root);
    EXPECT_TRUE(is_plain_group(first));
    EXPECT_TRUE(is_plain_group(second));
    EXPECT_NE(core_of<Geometry>(outside), nullptr);
}

// --- what has nothing to show ---

struct GeometryCase
{
    char const *name;
    bool hasTypes, hasLengths;
    std::vector<UInt32> types, lengths;
    bool stays;
};

void PrintTo(GeometryCase const &row, std::ostream *out) { *out << row.name; }

class Geometries : public testing::TestWithParam<GeometryCase>
{
  protected:
    static NodePtr shape()
    {
        NodePtr const node = make<Geometry>();
        if(GetParam().hasTypes)
            core_of<Geometry>(node)->setTypes(make_property<GeoUInt8Property>(GetParam().types));
        if(GetParam().hasLengths)
            core_of<Geometry>(node)->setLengths(
                make_property<GeoUInt32Property>(GetParam().lengths));
        return node;
    }
};

TEST_P(Geometries, WithoutMaterialStayWhereTheyHavePrimitives)
{
    NodePtr const root = make_group({shape()});
    run<Simplify>(root);
    EXPECT_EQ(root->getNChildren(), GetParam().stays ? 1u : 0u);
}

TEST_P(Geometries, WithMaterialStay)
{
    NodePtr const root = make_group({shape()});
    core_of<Geometry>(root->getChild(0))->setMaterial(make_material());
    run<Simplify>(root);
    EXPECT_EQ(root->getNChildren(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Simplify, Geometries,
                         testing::Values(GeometryCase{"Nothing", false, false, {}, {}, false},
                                         GeometryCase{"NoLengths", true, false, {4}, {}, false},
                                         GeometryCase{"NoTypes", false, true, {}, {3}, false},
                                         GeometryCase{"Empty", true, true, {}, {}, false},
                                         GeometryCase{"MoreTypes", true, true, {4, 4}, {3}, false},
                                         GeometryCase{
                                             "MoreLengths", true, true, {4}, {3, 3}, false},
                                         GeometryCase{"AsMany", true, true, {4, 4}, {3, 3}, true}),
                         [](auto const &row) { return std::string(row.param.name); });

TEST(Simplify, AGeometryWithNothingToShowGoesWithItsChildren)
{
    NodePtr const root = make_group({make<Geometry>({make_triangle()})});
    run<Simplify>(root);
    EXPECT_EQ(root->getNChildren(), 0u);
}

TEST(Simplify, GroupsThatAreEmptiedFromBelowGo)
{
    NodePtr const root = make_group(
        {make_transform(Matrix(), {make_group({make_switch(-1, {}), make<Geometry>()})})});
    run<Simplify>(root);
    EXPECT_EQ(root->getNChildren(), 0u);
}

TEST(Simplify, AMaterialGroupWithoutMaterialAndChildrenGoes)
{
    NodePtr const root = make_group({make<MaterialGroup>(), make<MaterialChunkOverrideGroup>(),
                                     make<MaterialGroup>({make_triangle()})});
    Node *const kept = root->getChild(2);
    run<Simplify>(root);
    EXPECT_THAT(children_of(root), ElementsAre(kept));
}

TEST(Simplify, WhatIsNoGroupAndAVisitedTreeStay)
{
    NodePtr const stage = make_stage();
    NodePtr const bare = make_node(nullptr);
    NodePtr const visit = make_visit(nullptr);
    NodePtr const root = make_group({stage, bare, visit});
    run<Simplify>(root);
    EXPECT_THAT(children_of(root), ElementsAre(stage, bare, visit));
}

TEST(Simplify, AVisitedTreeIsNotEnteredNotEvenInACycle)
{
    NodePtr const visit = make_visit(nullptr);
    NodePtr const root = make_group({visit});
    core_of<VisitSubTree>(visit)->setSubTreeRoot(root);
    EXPECT_TRUE(run<Simplify>(root));
    EXPECT_THAT(children_of(root), ElementsAre(visit));
    core_of<VisitSubTree>(visit)->setSubTreeRoot(nullptr);
}

TEST(Simplify, AHundredThousandLevelsAreGood)
{
    NodePtr const root =
        make_group({make_chain(100000, make_triangle(), [] { return make_switch(0, {}); })});
    EXPECT_TRUE(run<Simplify>(root));
    UInt32 levels = 0;
    for(Node const *node = root; node->getNChildren() != 0; node = node->getChild(0))
        ++levels;
    EXPECT_EQ(levels, 100001u);
}

// --- choices that name nothing ---

TEST(Simplify, ChoicesBeyondWhatIsThereTakeNothing)
{
    NodePtr const root =
        make_group({make_switch(99, {make_triangle()}), make_switch(-7, {make_triangle()}),
                    make_triangle(), make_multi_switch(-1, {0, 7}, {make_triangle()})});
    MaterialPtr const material = make_switch_material(1, {make_material().get()});
    core_of<Geometry>(root->getChild(2))->setMaterial(material);
    run<Simplify>(root);
    ASSERT_EQ(root->getNChildren(), 2u);
    EXPECT_EQ(core_of<Geometry>(root->getChild(0))->getMaterial(), material);
    EXPECT_EQ(root->getChild(1)->getNChildren(), 1u);
}

TEST(Simplify, ASwitchThatIsResolvedToNothingMovesTheChoicesAboveIt)
{
    NodePtr const chosen = make_triangle();
    NodePtr const root = make_group({make_switch(1, {make_switch(-1, {make_triangle()}), chosen})});
    run<Simplify>(root);
    EXPECT_EQ(root->getNChildren(), 0u);
}
} // namespace
} // namespace OSG::Test
