// Graph operations on the command line: their list, and the report on what they did.

#include "Operations.h"

#include <sstream>

#include <gmock/gmock.h>

#include "Keys.h"
#include "LogCapture.h"
#include "OSGGraphOpFactory.h"
#include "OSGMrgGraphOp.h"
#include "OperationScenes.h"
#include "Program.h"
#include "SceneDump.h"

namespace Tool::Test
{
namespace
{
using OSG::Test::make_group;
using OSG::Test::make_transform;
using OSG::Test::make_triangle;
using OSG::Test::NodePtr;

constexpr char const *AccountKeys = "name params nodesBefore nodesAfter seconds removed moved "
                                    "baked materialsReplaced namesCleared";

Json json_of(std::vector<std::string> words)
{
    words.push_back("--json");
    Outcome const outcome = run_program(words);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    return Json::parse(outcome.out, nullptr, false);
}

// --- ops ---

TEST(Ops, ListsTheOperationsInTheOrderOfTheirRegistration)
{
    Json const ops = json_of({"ops"});
    ASSERT_EQ(ops.size(), 3u);
    for(Json const &op : ops)
        EXPECT_EQ(keys_of(op), "name usage");
    EXPECT_EQ(ops[0]["name"], "GrpMerge");
    EXPECT_EQ(ops[1]["name"], "Mrg");
    EXPECT_EQ(ops[2]["name"], "SimplifyRenderEngine");
    EXPECT_EQ(ops[0]["usage"], "GrpMerge: Combine adjacent Groups into one.\n");
}

TEST(Ops, ForPeopleHasNamesAndUsages)
{
    Outcome const outcome = run_program({"ops"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out.rfind("GrpMerge\nGrpMerge: Combine adjacent Groups into one.\nMrg\n"
                                "Merge: merge all geometries in a subtree\n",
                                0),
              0u);
}

// --- --op ---

TEST(DumpWithOperations, HasWhatTheyDidBehindTheTree)
{
    Json const dump =
        json_of({"dump", pavilion(), "--op", "Mrg=color_is_vector=0", "--op", "GrpMerge"});
    EXPECT_EQ(keys_of(dump), "file root complete operations");
    ASSERT_EQ(dump["operations"].size(), 2u);
    for(Json const &account : dump["operations"])
        EXPECT_EQ(keys_of(account), AccountKeys);
    EXPECT_EQ(dump["operations"][0]["name"], "Mrg");
    EXPECT_EQ(dump["operations"][0]["params"], "color_is_vector=0");
    EXPECT_EQ(dump["operations"][1]["name"], "GrpMerge");
    EXPECT_EQ(dump["operations"][1]["params"], "");
}

TEST(DumpWithOperations, AnObjSceneComesOutAsItWentIn)
{
    std::vector<std::string> const operations = {"--op",     "Mrg",  "--op",
                                                 "GrpMerge", "--op", "SimplifyRenderEngine"};
    for(std::vector<std::string> words :
        {std::vector<std::string>{"dump", pavilion(), "--arrays"},
         {"select", pavilion(), "--box", "-9,-1,-9", "9,9,9", "--hits", "all"}})
    {
        Json before = json_of(words);
        words.insert(words.end(), operations.begin(), operations.end());
        Json after = json_of(words);
        ASSERT_EQ(after["operations"].size(), 3u);
        for(Json const &account : after["operations"])
        {
            EXPECT_EQ(account["nodesAfter"], account["nodesBefore"]);
            for(char const *key :
                {"removed", "moved", "baked", "materialsReplaced", "namesCleared"})
                EXPECT_EQ(account[key], 0) << account["name"] << ' ' << key;
        }
        after.erase("operations");
        before.erase("seconds");
        after.erase("seconds");
        EXPECT_EQ(before, after);
    }
}

TEST(DumpWithOperations, ThePlantComesOutSmallerInEveryWay)
{
    Json const dump = json_of({"dump", TEST_SOURCE_DIR "/Models/plant.osb", "--op", "Mrg", "--op",
                               "GrpMerge", "--op", "SimplifyRenderEngine"});
    Json const &accounts = dump["operations"];
    ASSERT_EQ(accounts.size(), 3u);
    EXPECT_EQ(accounts[0]["nodesBefore"], 167);
    EXPECT_EQ(accounts[2]["nodesAfter"], 76);
    EXPECT_EQ(accounts[0]["baked"], 59);
    EXPECT_EQ(accounts[0]["materialsReplaced"], 54);
    EXPECT_EQ(accounts[2]["materialsReplaced"], 5);
    EXPECT_EQ(accounts[2]["namesCleared"], 70);
    EXPECT_TRUE(dump["root"]["name"].is_null());
}

TEST(SelectWithOperations, HasWhatTheyDidBehindTheHits)
{
    Json const select =
        json_of({"select", pavilion(), "--box", "-1,0,-1", "1,1,1", "--op", "GrpMerge"});
    EXPECT_EQ(keys_of(select), "file hits count seconds complete indexed operations");
    EXPECT_EQ(keys_of(select["operations"][0]), AccountKeys);
}

TEST(Operations, WithoutJsonAreALineEach)
{
    Outcome const outcome = run_program({"dump", pavilion(), "--op=GrpMerge", "--op=Mrg"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out.rfind("GrpMerge: ", 0), 0u);
    EXPECT_NE(outcome.out.find("\nMrg: "), std::string::npos);
}

TEST(Operations, ParametersThatAreUnknownGiveTheWarningAndTheWorkIsDone)
{
    Outcome const outcome = run_program({"dump", pavilion(), "--op", "GrpMerge=x=1", "--json"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.err.find("GrpMergeGraphOp doesn't have parameters 'x=1'."),
              std::string::npos);
}

TEST(Operations, ProgressIsLoggedWhereAsked)
{
    Outcome const outcome = run_program({"dump", pavilion(), "--op", "Mrg", "--verbose"});
    EXPECT_NE(outcome.err.find("MrgGraphOp::traverse: Number of nodes before merge: "),
              std::string::npos);
}

// --- in the process ---

TEST(RunOperations, EditCommitAndUpdateTheVolumes)
{
    NodePtr const root =
        make_group({make_transform(OSG::Test::translation(5, 0, 0), {make_triangle()})});
    root->updateVolume();
    std::ostringstream out;
    OperationsResult const result =
        run_operations(root, {{"Mrg", ""}, {"GrpMerge", ""}}, {out, out});
    EXPECT_TRUE(result.done);
    ASSERT_EQ(result.accounts.size(), 2u);
    EXPECT_EQ(result.accounts[0].removed, 1u);
    EXPECT_EQ(result.accounts[0].baked, 1u);
    EXPECT_TRUE(root->getVolume().isValid());
    EXPECT_EQ(root->getVolume().getMin(), OSG::Pnt3f(5, 0, 0));
    EXPECT_EQ(root->getChild(0)->getVolume().getMax(), OSG::Pnt3f(6, 1, 0));
    EXPECT_EQ(root->getChangeMask() & OSG::Node::ChildrenFieldMask, 0u);
    EXPECT_EQ(out.str(), "");
}

/// An operation that always fails.
class Stubborn : public OSG::GraphOp
{
  public:
    static OSG::TransitPtr<Stubborn> create() { return OSG::TransitPtr<Stubborn>(new Stubborn); }
    OSG::TransitPtr<OSG::GraphOp> clone() override { return create(); }
    void setParams(std::string) override {}
    std::string usage() override { return "Stubborn: does nothing.\n"; }
    bool traverse(OSG::Node *) override { return false; }

  private:
    Stubborn()
        : GraphOp("Stubborn")
    {
    }
};

TEST(RunOperations, OneThatDoesNotGoThroughEndsThem)
{
    OSG::UnrecordedRefPtr<Stubborn> const prototype(Stubborn::create());
    OSG::GraphOpFactoryBase::the()->registerOp(prototype);
    NodePtr const root = make_group({make_group()});
    std::ostringstream out;
    OperationsResult const result =
        run_operations(root, {{"Stubborn", ""}, {"GrpMerge", ""}}, {out, out});
    EXPECT_FALSE(result.done);
    EXPECT_EQ(result.accounts.size(), 1u);
    EXPECT_EQ(out.str(), "tolvanite: Stubborn did not go through\n");
    EXPECT_EQ(root->getNChildren(), 1u);
}

TEST(RunOperations, ThousandsOfLevelsAreGoodAndCanBeDumped)
{
    // The text has a path for each node, as long as the node is deep.
    constexpr OSG::UInt32 Levels = 4000;
    NodePtr const root = OSG::Test::make_chain(Levels, make_triangle(),
                                               [] { return OSG::Test::make_visit(nullptr); });
    std::ostringstream out;
    EXPECT_TRUE(
        run_operations(root, {{"SimplifyRenderEngine", ""}, {"GrpMerge", ""}}, {out, out}).done);
    std::ostringstream dump;
    JsonWriter json(dump);
    write_tree(json, root, Arrays::Counted);
    EXPECT_GT(dump.str().size(), Levels * 20u);
}
} // namespace
} // namespace Tool::Test
