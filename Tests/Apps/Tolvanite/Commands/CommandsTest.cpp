// The output of the commands, which are run as a separate program.

#include <gtest/gtest.h>

#include "Command.h"
#include "Keys.h"
#include "OSGLog.h"
#include "Program.h"

namespace Tool::Test
{
namespace
{
/// The JSON that a command line prints. The command has to succeed and print nothing to standard
/// error.
Json json_of(std::vector<std::string> words)
{
    words.push_back("--json");
    Outcome const outcome = run_program(words);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    return Json::parse(outcome.out, nullptr, false);
}

// A triangle, a quad, a broken triangle, in two groups of materials.
char const *const SmallScene = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0.5\n"
                               "f 1 2 3\nf 1 2 3 4\nf 1 2 9\n";

TEST(Program, TellsItsVersion)
{
    Outcome const outcome = run_program({"--version"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "tolvanite " TOOL_VERSION "\n");
}

TEST(Program, HelpsWithEachCommand)
{
    EXPECT_EQ(run_program({"--help"}).status, 0);
    for(char const *command :
        {"info", "dump", "select", "convert", "replay", "ops", "formats", "types"})
    {
        EXPECT_NE(run_program({"--help"}).out.find(command), std::string::npos);
        Outcome const outcome = run_program({command, "--help"});
        EXPECT_EQ(outcome.status, 0);
        EXPECT_NE(outcome.out.find("--json"), std::string::npos);
        EXPECT_EQ(outcome.err, "");
    }
}

TEST(Info, HasTheseKeysInThisOrder)
{
    Json const info = json_of({"info", pavilion()});
    EXPECT_EQ(keys_of(info), "file nodes geometries materials images vertices triangles lines "
                             "points cores bounds loadSeconds peakBytes complete");
    EXPECT_EQ(keys_of(info["bounds"]), "min max");
    EXPECT_EQ(info["file"], pavilion());
    EXPECT_GT(info["images"], 0);
}

TEST(Info, CountsASmallScene)
{
    TextFile const file("small.obj", SmallScene);
    Outcome const outcome = run_program({"info", file.path(), "--json"});
    Json const info = Json::parse(outcome.out);
    EXPECT_EQ(info["geometries"], 1);
    EXPECT_EQ(info["vertices"], 4);
    EXPECT_EQ(info["triangles"], 3);
    EXPECT_EQ(info["bounds"], Json::parse(R"({"min": [0, 0, 0], "max": [1, 1, 0.5]})"));
    // The bound is above the size of the arrays, because the program's own memory counts too.
    EXPECT_GT(info["peakBytes"], 10000);
}

TEST(Info, WithoutJsonIsATable)
{
    Outcome const outcome = run_program({"info", pavilion()});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out.rfind("nodes        ", 0), 0u);
    EXPECT_NE(outcome.out.find("\ntriangles    "), std::string::npos);
}

TEST(Verbosity, NothingIsLoggedWhereNothingIsAmiss)
{
    EXPECT_EQ(run_program({"info", pavilion()}).err, "");
    EXPECT_EQ(run_program({"info", pavilion(), "--quiet"}).err, "");
}

TEST(Verbosity, TheLogLevelIsFiveWhereAskedElseTwo)
{
    OSG::LogLevel const former = OSG::osgLogP->getLogLevel();
    apply_log_level({.verbose = true});
    EXPECT_EQ(OSG::osgLogP->getLogLevel(), 5);
    apply_log_level({});
    EXPECT_EQ(OSG::osgLogP->getLogLevel(), 2);
    OSG::osgLogP->setLogLevel(former);
}

TEST(Dump, HasTheTreeThatInfoCounts)
{
    Json const dump = json_of({"dump", pavilion()});
    EXPECT_EQ(keys_of(dump), "file root complete");
    Json const info = json_of({"info", pavilion()});
    std::size_t nodes = 0;
    std::vector<Json const *> open{&dump["root"]};
    while(!open.empty())
    {
        Json const &node = *open.back();
        open.pop_back();
        ++nodes;
        for(Json const &child : node["children"])
            open.push_back(&child);
    }
    EXPECT_EQ(nodes, info["nodes"]);
    EXPECT_EQ(dump["root"]["bounds"], info["bounds"]);
}

TEST(Dump, WritesArraysWhereAsked)
{
    TextFile const file("small.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0.5\nf 1 2 3 4\n");
    Json const geometry = json_of({"dump", file.path(), "--arrays"})["root"];
    Json const &shape = geometry["children"].empty() ? geometry : geometry["children"][0];
    EXPECT_EQ(shape["positions"]["values"], Json::parse("[[0,0,0],[1,0,0],[1,1,0],[0,1,0.5]]"));
    EXPECT_EQ(shape["indices"]["positions"]["values"], Json::parse("[0,1,2,3]"));
    Json const counted = json_of({"dump", file.path()})["root"];
    Json const &same = counted["children"].empty() ? counted : counted["children"][0];
    EXPECT_EQ(same["positions"], Json::parse(R"({"count": 4})"));
}

TEST(Formats, ListsTheSceneFileTypes)
{
    Json const formats = json_of({"formats"});
    ASSERT_TRUE(formats.is_array());
    bool hasObj = false;
    for(Json const &format : formats)
    {
        EXPECT_EQ(keys_of(format), "name suffixes read write overridePriority");
        hasObj = hasObj || format["suffixes"] == Json::parse(R"(["obj"])");
    }
    EXPECT_TRUE(hasObj);
    EXPECT_NE(run_program({"formats"}).out.find(".obj"), std::string::npos);
}

TEST(Types, ListsTheContainerTypesWithTheirOwnFields)
{
    Json const types = json_of({"types"});
    ASSERT_TRUE(types.is_array());
    Json const *transform = nullptr;
    for(Json const &type : types)
    {
        EXPECT_EQ(keys_of(type), "name parent group fields description xml");
        for(Json const &field : type["fields"])
            EXPECT_EQ(keys_of(field), "name id mask type cardinality internal description");
        if(type["name"] == "Transform")
            transform = &type;
    }
    ASSERT_NE(transform, nullptr);
    EXPECT_EQ((*transform)["parent"], "Group");
    ASSERT_EQ((*transform)["fields"].size(), 1u);
    EXPECT_EQ((*transform)["fields"][0]["name"], "matrix");
    EXPECT_EQ((*transform)["fields"][0]["type"], "Matrix");
    EXPECT_EQ((*transform)["fields"][0]["cardinality"], "single");
    EXPECT_NE(run_program({"types"}).out.find("Transform : Group\n"), std::string::npos);
}

TEST(Help, IsPrintedWhereNothingElseIsAsked)
{
    Outcome const alone = run_program({});
    EXPECT_EQ(alone.status, 0);
    EXPECT_EQ(alone.err, "");
    EXPECT_NE(alone.out.find("Usage"), std::string::npos);
    EXPECT_EQ(run_program({"help"}).out, alone.out);
    EXPECT_EQ(run_program({"--help"}).out, alone.out);
}

TEST(Help, OfACommandIsItsOwn)
{
    Outcome const help = run_program({"help", "select"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.out, run_program({"select", "--help"}).out);
}

TEST(Help, NamesTheDefaults)
{
    std::string const help = run_program({"help", "select"}).out;
    for(std::string const option : {"=triangles ", "=near ", "=front ", "=2 "})
        EXPECT_NE(help.find(option), std::string::npos) << option << help;
}
} // namespace
} // namespace Tool::Test
