// The files that `tolvanite convert` writes, and those that it must not change.

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "FileContent.h"
#include "Keys.h"
#include "OSGGeometry.h"
#include "OSGGroup.h"
#include "OSGImage.h"
#include "OSGNode.h"
#include "OSGSceneFileHandler.h"
#include "OSGSimpleTexturedMaterial.h"
#include "Program.h"
#include "TempFolder.h"
#include "Tool.h"

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

TEST_F(Convert, NamesStandInItsLinesWithoutControlCharacters)
{
    std::string const strange = folder.path("\x1b[31mred\n.osb");
    Outcome const outcome = run_program({"convert", pavilion(), strange});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.out.find("\\x1B[31mred\\x0A.osb: "), std::string::npos);
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 1);
    EXPECT_EQ(Json::parse(run_program({"convert", strange, target, "--json"}).out)["in"], strange);
    std::string const nowhere = folder.path("no\x1b/a.osb");
    EXPECT_EQ(run_program({"convert", strange, nowhere}).err, "tolvanite: cannot write " +
                                                                  folder.path("no\\x1B/a.osb") +
                                                                  ": No such file or directory\n");
}

// --- memory ---

TEST_F(Convert, MemoryThatIsMissingAtAnyPlaceIsNamedAndTheTargetStays)
{
    constexpr int LoaderFailed = 127; // the program has not been started
    std::string const out = folder.path("scene.obj");
    folder.write("scene.obj", "old");
    folder.write("scene.mtl", "old");
    int failures = 0;
    unsigned megabytes = 8;
    for(int status = Failed; status != Success; megabytes += 2)
    {
        ASSERT_LT(megabytes, 1000u);
        Outcome const outcome =
            run_program_within(megabytes, {"convert", pavilion(), out, "--quiet"});
        status = outcome.status;
        if(status == Success || status == LoaderFailed)
            continue;
        ++failures;
        ASSERT_EQ(status, Failed);
        ASSERT_EQ(outcome.err, "tolvanite: out of memory\n");
        ASSERT_EQ(outcome.out, "");
        ASSERT_EQ(content_of(out) + content_of(folder.path("scene.mtl")), "oldold");
        ASSERT_EQ(files().size(), 2u);
    }
    EXPECT_GT(failures, 2);
    EXPECT_GT(content_of(out).size(), 1000u);
}

// --- formats of several files ---

/// A square with a texture, in the folder.
class ConvertToObj : public Convert
{
  protected:
    ConvertToObj()
    {
        OSG::UInt8 const pixels[] = {255, 0, 0, 0, 255, 0};
        OSG::UnrecordedRefPtr<OSG::Image> const image(OSG::Image::create());
        image->set(2, 1, 3, pixels);
        image->write(folder.path("tiles.png").c_str());
        folder.write("in.mtl", "newmtl tiled\nmap_Kd tiles.png\n");
        folder.write("in.obj", "mtllib in.mtl\nusemtl tiled\nv 0 0 0\nv 1 0 0\nv 1 1 0\n"
                               "v 0 1 0\nf 1 2 3 4\n");
    }

    std::string const source = folder.path("in.obj");
};

TEST_F(ConvertToObj, WritesTheLibraryAndTheImagesBesideTheTarget)
{
    fs::create_directory(folder.path("out"));
    Outcome const outcome = run_program({"convert", source, folder.path("out/scene.obj")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(content_of(folder.path("out/scene.obj")).find("\nmtllib scene.mtl\n"),
              std::string::npos);
    EXPECT_NE(content_of(folder.path("out/scene.mtl")).find("    map_Kd tiles.png\n"),
              std::string::npos);
    EXPECT_GT(fs::file_size(folder.path("out/tiles.png")), 50u);
}

TEST_F(ConvertToObj, APictureThatTheSceneWasReadFromStaysAsItIs)
{
    fs::path const picture = folder.path("tiles.png");
    fs::last_write_time(picture, fs::file_time_type::clock::now() - std::chrono::hours(1));
    auto const before = fs::last_write_time(picture);
    EXPECT_EQ(run_program({"convert", source, folder.path("out.obj")}).status, 0);
    EXPECT_EQ(fs::last_write_time(picture), before);
    EXPECT_TRUE(fs::exists(folder.path("out.mtl")));
}

TEST_F(ConvertToObj, WarnsOfWhatReadersWillMissUnlessItIsQuiet)
{
    std::string const out = folder.path("the scene.obj");
    Outcome const loud = run_program({"convert", source, out});
    EXPECT_EQ(loud.status, 0);
    EXPECT_EQ(loud.err,
              "WARNING: Readers find no file for the name 'the scene.mtl', as it has a blank.\n"
              "WARNING: Readers do not use the materials of 1 geometry in 'the scene.mtl': the "
              "file names those of material groups alone.\n");
    EXPECT_EQ(run_program({"convert", source, out, "--quiet"}).err, "");
    EXPECT_EQ(run_program({"convert", source, target}).err, "");
}

TEST_F(ConvertToObj, KeepsMaterialsAndTexturesInUseWhereTheyAreGrouped)
{
    std::string const out = folder.path("out.obj");
    Outcome const outcome = run_program({"convert", source, out, "--group-materials", "--json"});
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(Json::parse(outcome.out)["nodesBefore"], 1);
    EXPECT_EQ(Json::parse(outcome.out)["nodesAfter"], 2);
    EXPECT_NE(content_of(out).find("\nusemtl Geometry1\n"), std::string::npos);
    EXPECT_EQ(dumpOf(out)["root"]["material"]["image"], folder.path("tiles.png"));
}

TEST_F(ConvertToObj, WarnsWhereSixDigitsMoveTheCorners)
{
    std::string const before =
        "WARNING: Numbers have six digits in this format: corners move by up to ";
    for(auto const &[corners, warning] :
        {std::pair<std::string, std::string>{"v 0 0 0\nv 1 0 0\nv 0 999 0\n", ""},
         {"v 10000 0 0\nv 10999 0 0\nv 10000 999 0\n", ""},
         {"v 10000 0 0\nv 10099 0 0\nv 10000 99 0\n", before + "0.05 units.\n"},
         {"v 0 -1000000 0\nv 1 -1000000 0\nv 0 -1000001 0\n", before + "5 units.\n"}})
    {
        std::string const far = folder.write("far.obj", corners + "f 1 2 3\n");
        EXPECT_EQ(run_program({"convert", far, folder.path("out.obj")}).err, warning) << corners;
        EXPECT_EQ(run_program({"convert", far, target}).err, "");
    }
}

TEST_F(ConvertToObj, KeepsTheTrianglesOfTheModel)
{
    std::string const first = folder.path("first.obj");
    std::string const second = folder.path("second.obj");
    EXPECT_EQ(run_program({"convert", pavilion(), first}).status, 0);
    EXPECT_EQ(run_program({"convert", first, second}).status, 0);
    auto const triangles = [](std::string const &file) {
        return Json::parse(run_program({"info", file, "--json"}).out)["triangles"];
    };
    EXPECT_EQ(triangles(first), triangles(pavilion()));
    EXPECT_EQ(triangles(second), triangles(pavilion()));
}

TEST_F(ConvertToObj, ALibraryThatCannotBeReplacedIsAnErrorAndTheTargetIsNotWritten)
{
    fs::create_directory(folder.path("out.mtl"));
    Outcome const outcome = run_program({"convert", source, folder.path("out.obj")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "tolvanite: cannot write " + folder.path("out.obj") + ": out.mtl: Is a directory\n");
    EXPECT_FALSE(fs::exists(folder.path("out.obj")));
}

TEST_F(ConvertToObj, ALibraryThatTheDiskDoesNotTakeIsAnErrorAndNothingIsReplaced)
{
    OSG::UnrecordedRefPtr<OSG::Node> const root(OSG::Node::create());
    root->setCore(OSG::UnrecordedRefPtr<OSG::Group>(OSG::Group::create()));
    OSG::UnrecordedRefPtr<OSG::Geometry> const geometry(OSG::Geometry::create());
    geometry->setMaterial(
        OSG::UnrecordedRefPtr<OSG::SimpleMaterial>(OSG::SimpleMaterial::create()));
    for(int i = 0; i < 20; ++i)
    {
        OSG::UnrecordedRefPtr<OSG::Node> const node(OSG::Node::create());
        node->setCore(geometry);
        root->addChild(node);
    }
    ASSERT_TRUE(OSG::SceneFileHandlerBase::the()->write(root, target.c_str()));
    folder.write("out.obj", "old");
    folder.write("out.mtl", "old");
    // The scene's text has 500 bytes, its library 4,000.
    Outcome const outcome =
        run_program_with_files_of(2048, {"convert", target, folder.path("out.obj")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "tolvanite: cannot write " + folder.path("out.obj") + ": File too large\n");
    EXPECT_EQ(content_of(folder.path("out.obj")), "old");
    EXPECT_EQ(content_of(folder.path("out.mtl")), "old");
    EXPECT_EQ(files().size(), 6u);
}

TEST_F(ConvertToObj, APictureInAFormatThatNobodyWritesIsNamedAndLeftOut)
{
    OSG::UInt8 const pixels[] = {1, 2, 3};
    OSG::UnrecordedRefPtr<OSG::Image> const image(OSG::Image::create());
    image->set(1, 1, 3, pixels);
    image->setName("picture.unknown");
    OSG::UnrecordedRefPtr<OSG::SimpleTexturedMaterial> const material(
        OSG::SimpleTexturedMaterial::create());
    material->setImage(image);
    OSG::UnrecordedRefPtr<OSG::Geometry> const geometry(OSG::Geometry::create());
    geometry->setMaterial(material);
    OSG::UnrecordedRefPtr<OSG::Node> const root(OSG::Node::create());
    root->setCore(geometry);
    ASSERT_TRUE(OSG::SceneFileHandlerBase::the()->write(root, target.c_str()));
    Outcome const outcome = run_program({"convert", target, folder.path("out.obj")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(
        outcome.err.find("tolvanite: cannot write picture.unknown: no format writes 'unknown'\n"),
        0u);
    EXPECT_TRUE(fs::exists(folder.path("out.mtl")));
}
} // namespace
} // namespace Tool::Test
