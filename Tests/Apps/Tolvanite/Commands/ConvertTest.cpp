// The files that `tolvanite convert` writes, and those that it must not change.

#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "FileContent.h"
#include "Keys.h"
#include "Program.h"
#include "TempFolder.h"

namespace Tool::Test
{
namespace
{
using OSG::Test::content_of;
namespace fs = std::filesystem;

/// An empty folder for the written files.
class Convert : public testing::Test
{
  protected:
    std::vector<std::string> files() const
    {
        std::vector<std::string> names;
        for(auto const &entry : fs::directory_iterator(folder.path("")))
            names.push_back(entry.path().filename().string());
        return names;
    }
    Json dumpOf(std::string const &file) const
    {
        Json dump = Json::parse(run_program({"dump", file, "--arrays", "--json"}).out);
        dump.erase("file");
        return dump;
    }

    OSG::Test::TempFolder folder;
    std::string const target = folder.path("scene.osb");
};

TEST_F(Convert, KeepsEverythingThatADumpShows)
{
    Outcome const outcome = run_program({"convert", pavilion(), target});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(dumpOf(target), dumpOf(pavilion()));
}

TEST_F(Convert, OfItsOwnResultChangesNothing)
{
    run_program({"convert", pavilion(), target});
    std::string const again = folder.path("again.osb");
    EXPECT_EQ(run_program({"convert", target, again}).status, 0);
    EXPECT_EQ(content_of(again), content_of(target));
}

TEST_F(Convert, HasTheseKeysInThisOrder)
{
    Outcome const outcome = run_program({"convert", pavilion(), target, "--json"});
    Json const result = Json::parse(outcome.out);
    EXPECT_EQ(keys_of(result), "in out nodesBefore nodesAfter seconds complete");
    EXPECT_EQ(result["in"], pavilion());
    EXPECT_EQ(result["out"], target);
    EXPECT_EQ(result["nodesBefore"], result["nodesAfter"]);
    EXPECT_GT(result["nodesBefore"], 1);
}

TEST_F(Convert, TellsWhatOperationsDid)
{
    Outcome const outcome =
        run_program({"convert", pavilion(), target, "--op", "GrpMerge", "--json"});
    EXPECT_EQ(keys_of(Json::parse(outcome.out)),
              "in out nodesBefore nodesAfter seconds complete operations");
}

TEST_F(Convert, LeavesNothingElseBesideTheTarget)
{
    run_program({"convert", pavilion(), target});
    EXPECT_EQ(files(), std::vector<std::string>{"scene.osb"});
}

TEST_F(Convert, ReplacesTheFileThatItReads)
{
    run_program({"convert", pavilion(), target});
    std::string const before = content_of(target);
    EXPECT_EQ(run_program({"convert", target, target}).status, 0);
    EXPECT_EQ(content_of(target), before);
}

TEST_F(Convert, WhereNothingIsReadTheOldTargetStays)
{
    folder.write("scene.osb", "precious");
    folder.write("broken.osb", "not a scene");
    Outcome const outcome = run_program({"convert", folder.path("broken.osb"), target});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_NE(outcome.err.find("tolvanite: cannot read"), std::string::npos);
    EXPECT_EQ(content_of(target), "precious");
}

TEST_F(Convert, AFolderThatIsNotThereIsOneLineAndNothingIsMade)
{
    std::string const nowhere = folder.path("nowhere/scene.osb");
    Outcome const outcome = run_program({"convert", pavilion(), nowhere});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "tolvanite: cannot write " + nowhere + ": No such file or directory\n");
    EXPECT_TRUE(files().empty());
}

TEST_F(Convert, WhatIsNoFileIsNotReplaced)
{
    fs::create_directory(target);
    EXPECT_EQ(run_program({"convert", pavilion(), target}).status, 1);
    EXPECT_TRUE(fs::is_directory(target));
}

TEST_F(Convert, ALinkStaysALink)
{
    folder.write("real.osb", "old");
    fs::create_symlink(folder.path("real.osb"), target);
    EXPECT_EQ(run_program({"convert", pavilion(), target}).status, 0);
    EXPECT_TRUE(fs::is_symlink(target));
    EXPECT_GT(fs::file_size(folder.path("real.osb")), 1000u);
}

TEST_F(Convert, ALinkToNothingYetStaysALinkAsWell)
{
    fs::create_symlink("later.osb", target);
    EXPECT_EQ(run_program({"convert", pavilion(), target}).status, 0);
    EXPECT_TRUE(fs::is_symlink(target));
    EXPECT_TRUE(fs::is_regular_file(folder.path("later.osb")));
}

TEST_F(Convert, WhoCouldNotReadTheOldFileCannotReadTheNewOne)
{
    folder.write("scene.osb", "private");
    fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(run_program({"convert", pavilion(), target}).status, 0);
    EXPECT_EQ(fs::status(target).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}
} // namespace
} // namespace Tool::Test
