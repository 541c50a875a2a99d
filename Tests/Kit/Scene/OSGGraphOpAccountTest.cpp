#include "OSGGraphOpAccount.h"

#include <gtest/gtest.h>

#include "OSGFieldContainerFactory.h"
#include "OSGGraphOpFactory.h"
#include "OSGMaterialGroup.h"
#include "OSGName.h"
#include "OSGSwitch.h"
#include "OSGSwitchMaterial.h"
#include "OperationScenes.h"

namespace OSG::Test
{
namespace
{
GraphOpAccount account_for(char const *name, Node *root, std::string const &params = {})
{
    UnrecordedRefPtr<GraphOp> const operation(GraphOpFactoryBase::the()->create(name));
    return traverse_accounted(*operation, root, params);
}

TEST(GraphOpAccount, SaysWhichOperationRanWithWhichParameters)
{
    NodePtr const root = make_group();
    GraphOpAccount const account = account_for("Mrg", root, "color_is_vector=0");
    EXPECT_EQ(account.name, "Mrg");
    EXPECT_EQ(account.params, "color_is_vector=0");
    EXPECT_TRUE(account.wentThrough);
    EXPECT_GE(account.seconds, 0);
    EXPECT_EQ(account.nodesBefore, 1u);
    EXPECT_EQ(account.nodesAfter, 1u);
}

TEST(GraphOpAccount, OfASceneThatStaysHasOnlyItsNodes)
{
    NodePtr const root = make_group({make_triangle(), make_triangle()});
    setName(root, "root");
    GraphOpAccount const account = account_for("Mrg", root);
    EXPECT_EQ(account.nodesBefore, 3u);
    EXPECT_EQ(account.nodesAfter, 3u);
    EXPECT_EQ(account.removed + account.moved + account.baked + account.materialsReplaced +
                  account.namesCleared,
              0u);
}

TEST(GraphOpAccount, CountsNodesThatWentAndNodesThatMoved)
{
    NodePtr const root =
        make_group({make_group({make_triangle(), make_triangle()}), make_triangle(), make_group()});
    GraphOpAccount const account = account_for("GrpMerge", root);
    EXPECT_EQ(account.nodesBefore, 6u);
    EXPECT_EQ(account.nodesAfter, 4u);
    EXPECT_EQ(account.removed, 2u);
    EXPECT_EQ(account.moved, 2u);
}

TEST(GraphOpAccount, CountsBakedNodesAndNotTheirCopiedCoresAsMaterials)
{
    NodePtr const root =
        make_group({make_transform(translation(1, 0, 0), {make_triangle(), make_triangle()}),
                    make_triangle()});
    GraphOpAccount const account = account_for("Mrg", root);
    EXPECT_EQ(account.baked, 2u);
    EXPECT_EQ(account.moved, 2u);
    EXPECT_EQ(account.materialsReplaced, 0u);
}

TEST(GraphOpAccount, CountsCoresWithAnotherMaterialOnce)
{
    NodePtr const a = make_triangle();
    NodePtr const b = make_node(a->getCore());
    NodePtr const group = make<MaterialGroup>({a, b, make_transform(Matrix(), {make_triangle()})});
    core_of<MaterialGroup>(group)->setMaterial(make_material());
    NodePtr const root = make_group({group});
    GraphOpAccount const account = account_for("Mrg", root);
    EXPECT_EQ(account.materialsReplaced, 2u) << "the core that two show, and the baked one";
    EXPECT_EQ(account.baked, 1u);
}

TEST(GraphOpAccount, CountsSwitchMaterialsThatAreResolved)
{
    UnrecordedRefPtr<SwitchMaterial> const choice(SwitchMaterial::create());
    choice->editMFMaterials()->push_back(make_material());
    NodePtr const shape = make_triangle();
    core_of<Geometry>(shape)->setMaterial(choice);
    NodePtr const group = make<MaterialGroup>({make_triangle()});
    core_of<MaterialGroup>(group)->setMaterial(choice);
    NodePtr const root = make_group({shape, group});
    EXPECT_EQ(account_for("SimplifyRenderEngine", root).materialsReplaced, 2u);
}

TEST(GraphOpAccount, NodesThatTheOperationMadeAreNeitherMovedNorRemoved)
{
    NodePtr const choice = make<Switch>({make_triangle(), make_triangle()});
    core_of<Switch>(choice)->setChoice(0);
    NodePtr const root = make_group({choice});
    GraphOpAccount const account = account_for("SimplifyRenderEngine", root);
    EXPECT_EQ(account.nodesBefore, 4u);
    EXPECT_EQ(account.nodesAfter, 3u);
    EXPECT_EQ(account.removed, 2u);
    EXPECT_EQ(account.moved, 1u);
}

TEST(GraphOpAccount, CountsTheNamesOfNodesThatAreStillThere)
{
    NodePtr const kept = make_triangle();
    NodePtr const gone = make_group();
    NodePtr const root = make_group({kept, gone});
    for(NodePtr const &node : {kept, gone, root})
        setName(node, "name");
    EXPECT_EQ(account_for("SimplifyRenderEngine", root).namesCleared, 2u);
}

TEST(GraphOpAccount, ATreeThatIsVisitedCountsOnceAndACycleEnds)
{
    NodePtr const tree = make_group({make_triangle()});
    NodePtr const first = make_visit(tree);
    NodePtr const second = make_visit(tree);
    NodePtr const root = make_transform(Matrix(), {first, second});
    EXPECT_EQ(account_for("GrpMerge", root).nodesBefore, 5u);
    core_of<VisitSubTree>(first)->setSubTreeRoot(root);
    GraphOpAccount const account = account_for("GrpMerge", root);
    EXPECT_EQ(account.nodesBefore, 5u);
    EXPECT_EQ(account.nodesAfter, 5u);
    core_of<VisitSubTree>(first)->setSubTreeRoot(nullptr);
}

TEST(GraphOpAccount, KeepsNothingAlive)
{
    UInt32 const before = FieldContainerFactoryBase::the()->getNumContainers();
    {
        NodePtr const root = make_group({make_group({make_group()})});
        account_for("GrpMerge", root);
        EXPECT_EQ(FieldContainerFactoryBase::the()->getNumContainers(), before + 2);
    }
    EXPECT_EQ(FieldContainerFactoryBase::the()->getNumContainers(), before);
}

TEST(GraphOpAccount, AHundredThousandLevelsAreGood)
{
    NodePtr const root = make_chain(100000, make_triangle(), [] { return make_group(); });
    GraphOpAccount const account = account_for("GrpMerge", root);
    EXPECT_EQ(account.nodesBefore, 100001u);
    EXPECT_EQ(account.removed, 99999u);
}

TEST(GraphOpAccount, NullHasNoNodesAndDoesNotGoThrough)
{
    GraphOpAccount const account = account_for("GrpMerge", nullptr);
    EXPECT_FALSE(account.wentThrough);
    EXPECT_EQ(account.nodesBefore, 0u);
}
} // namespace
} // namespace OSG::Test
