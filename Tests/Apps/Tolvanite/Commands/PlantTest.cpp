// The three operations on the scene that Examples/plant makes, as the tool runs them.

#include "Plant.h"

#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "Keys.h"
#include "OSGSceneAccount.h"
#include "OSGSceneFileHandler.h"
#include "Operations.h"
#include "Program.h"

namespace Tool::Test
{
namespace
{
OSG::GraphOpAccount run_one(OSG::Node *root, char const *name)
{
    std::ostringstream out;
    return run_operations(root, {{name, ""}}, {out, out}).accounts[0];
}

TEST(Plant, HoldsWhatTheOperationsAreFor)
{
    auto const plant = make_plant();
    OSG::SceneAccount const account = OSG::account_of(plant);
    for(char const *core : {"Group", "Transform", "MaterialGroup", "Switch", "MultiSwitch",
                            "Geometry", "DirectionalLight"})
        EXPECT_GT(account.cores.count(core), 0u) << core;
    EXPECT_GT(account.nodes, 100u);
}

TEST(Plant, MrgTakesGroupsTransformsAndMaterialGroupsAway)
{
    auto const plant = make_plant();
    OSG::GraphOpAccount const mrg = run_one(plant, "Mrg");
    EXPECT_LT(mrg.nodesAfter, mrg.nodesBefore);
    EXPECT_EQ(mrg.nodesBefore - mrg.nodesAfter, mrg.removed);
    EXPECT_GT(mrg.moved, 0u);
    EXPECT_GT(mrg.baked, 0u);
    EXPECT_GT(mrg.materialsReplaced, 0u);
    EXPECT_EQ(mrg.namesCleared, 0u);
}

TEST(Plant, GrpMergeTakesGroupsAwayAndMovesWhatTheyHold)
{
    auto const plant = make_plant();
    OSG::GraphOpAccount const merge = run_one(plant, "GrpMerge");
    EXPECT_GT(merge.removed, 0u);
    EXPECT_GT(merge.moved, 0u);
    EXPECT_EQ(merge.baked + merge.materialsReplaced + merge.namesCleared, 0u);
}

TEST(Plant, SimplifyRenderEngineResolvesChoicesAndClearsNames)
{
    auto const plant = make_plant();
    OSG::GraphOpAccount const simplify = run_one(plant, "SimplifyRenderEngine");
    EXPECT_GT(simplify.removed, 0u);
    EXPECT_GT(simplify.moved, 0u);
    EXPECT_GT(simplify.materialsReplaced, 0u);
    EXPECT_GT(simplify.namesCleared, 0u);
    OSG::SceneAccount const account = OSG::account_of(plant);
    EXPECT_EQ(account.cores.count("Switch") + account.cores.count("MultiSwitch"), 0u);
}

TEST(Plant, MostTrianglesAreWhereTheyWere)
{
    auto const plant = make_plant();
    OSG::SceneAccount const before = OSG::account_of(plant);
    run_one(plant, "Mrg");
    run_one(plant, "GrpMerge");
    OSG::SceneAccount const after = OSG::account_of(plant);
    EXPECT_EQ(after.triangles, before.triangles);
    for(int i = 0; i < 3; ++i)
    {
        EXPECT_NEAR(after.bounds.getMin()[i], before.bounds.getMin()[i], 1e-4f);
        EXPECT_NEAR(after.bounds.getMax()[i], before.bounds.getMax()[i], 1e-4f);
    }
}

TEST(Plant, TheModelIsWhatTheExampleMakes)
{
    std::ostringstream made;
    ASSERT_TRUE(OSG::SceneFileHandlerBase::the()->write(make_plant(), made, "osb"));
    std::ifstream file(TEST_SOURCE_DIR "/Models/plant.osb", std::ios::binary);
    std::ostringstream model;
    model << file.rdbuf();
    // Not compared by a matcher, because that would print both texts.
    EXPECT_TRUE(made.str() == model.str())
        << "Examples/plant has changed, or the format: plant Models/plant.osb writes it anew";
}

TEST(Plant, TheModelShrinksByTheProgram)
{
    Outcome const outcome =
        run_program({"dump", TEST_SOURCE_DIR "/Models/plant.osb", "--op", "Mrg", "--op", "GrpMerge",
                     "--op", "SimplifyRenderEngine", "--json"});
    EXPECT_EQ(outcome.status, 0);
    Json const operations = Json::parse(outcome.out)["operations"];
    ASSERT_EQ(operations.size(), 3u);
    EXPECT_EQ(operations[0]["nodesBefore"], 167);
    EXPECT_LT(operations[2]["nodesAfter"], 100);
    EXPECT_GT(operations[2]["namesCleared"], 0);
}
} // namespace
} // namespace Tool::Test
