#include "OSGPathHandler.h"

#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
using namespace OSG;
namespace fs = std::filesystem;

/// A folder of its own, in which the program stands meanwhile:
///   a.mtl  model/a.mtl  model/sub/b.mtl  list/c.mtl  model/folder.mtl/
class PathHandlerTest : public testing::Test
{
  protected:
    PathHandlerTest()
        : _former(fs::current_path())
        , _root(fs::temp_directory_path() / ("tolvanite-paths-" + std::to_string(getpid())))
    {
        fs::create_directories(_root / "model" / "sub");
        fs::create_directories(_root / "model" / "folder.mtl");
        fs::create_directories(_root / "list");
        for(char const *name : {"a.mtl", "model/a.mtl", "model/sub/b.mtl", "list/c.mtl"})
            std::ofstream(_root / name) << name;
        fs::current_path(_root);
        _root = fs::current_path();
    }
    ~PathHandlerTest() override
    {
        fs::current_path(_former);
        fs::remove_all(_root);
    }
    std::string full(char const *name) const { return (_root / name).string(); }

    fs::path _former;
    fs::path _root;
    PathHandler _handler;
};

TEST_F(PathHandlerTest, CurrentFolderIsSearchedAndTheFullPathComesBack)
{
    EXPECT_EQ(_handler.findFile("a.mtl"), full("a.mtl"));
    EXPECT_EQ(_handler.findFile("model/a.mtl"), full("model/a.mtl"));
}

TEST_F(PathHandlerTest, MissingNullAndEmptyNamesGiveTheEmptyString)
{
    EXPECT_EQ(_handler.findFile("none.mtl"), "");
    EXPECT_EQ(_handler.findFile(nullptr), "");
    EXPECT_EQ(_handler.findFile(""), "");
}

TEST_F(PathHandlerTest, FolderOfTheFileBeingReadComesBeforeTheCurrentFolder)
{
    _handler.setBaseFile("model/scene.obj");
    EXPECT_EQ(_handler.findFile("a.mtl"), full("model/a.mtl"));
    _handler.setBaseFile(nullptr);
    EXPECT_EQ(_handler.findFile("a.mtl"), full("a.mtl"));
}

TEST_F(PathHandlerTest, InnermostFileComesFirstAndTheOuterOneNext)
{
    _handler.pushBaseFile("model/scene.obj");
    _handler.pushBaseFile("./model/sub/part.obj");
    EXPECT_EQ(_handler.findFile("b.mtl"), full("model/sub/b.mtl"));
    EXPECT_EQ(_handler.findFile("a.mtl"), full("model/a.mtl"));
    _handler.popBaseFile();
    EXPECT_EQ(_handler.findFile("b.mtl"), "");
    _handler.popBaseFile();
    _handler.popBaseFile();
    EXPECT_EQ(_handler.findFile("a.mtl"), full("a.mtl"));
}

TEST_F(PathHandlerTest, GuardPushesWhileItLives)
{
    {
        PathHandlerBaseFile const guard(&_handler, "model/scene.obj");
        EXPECT_EQ(_handler.findFile("a.mtl"), full("model/a.mtl"));
    }
    EXPECT_EQ(_handler.findFile("a.mtl"), full("a.mtl"));
    PathHandlerBaseFile const none(nullptr, "model/scene.obj");
}

TEST_F(PathHandlerTest, FileNameWithoutFolderStandsForTheCurrentFolder)
{
    _handler.pushBackPath("list");
    _handler.setBaseFile("scene.obj");
    EXPECT_EQ(_handler.findFile("a.mtl"), full("a.mtl"));
}

TEST_F(PathHandlerTest, PathListIsSearchedInItsOrder)
{
    EXPECT_EQ(_handler.findFile("c.mtl"), "");
    _handler.pushBackPath("model");
    _handler.pushFrontPath(full("list").c_str());
    _handler.pushBackPath("");
    _handler.pushBackPath(nullptr);
    EXPECT_EQ(_handler.findFile("c.mtl"), full("list/c.mtl"));
    EXPECT_EQ(_handler.findFile("a.mtl"), full("model/a.mtl"));
    _handler.clearPathList();
    EXPECT_EQ(_handler.findFile("c.mtl"), "");
}

TEST_F(PathHandlerTest, AbsoluteNameStandsAndIsLookedForNowhereElse)
{
    EXPECT_EQ(_handler.findFile(full("list/c.mtl").c_str()), full("list/c.mtl"));
    _handler.setBaseFile("model/scene.obj");
    EXPECT_EQ(_handler.findFile("/a.mtl"), "");
}

TEST_F(PathHandlerTest, BackslashCountsAsASlash)
{
    EXPECT_EQ(_handler.findFile("model\\sub\\b.mtl"), full("model/sub/b.mtl"));
    _handler.setBaseFile("model\\scene.obj");
    EXPECT_EQ(_handler.findFile("a.mtl"), full("model/a.mtl"));
}

TEST_F(PathHandlerTest, OnlyRegularFilesAreFound)
{
    ASSERT_EQ(mkfifo("pipe.mtl", 0600), 0);
    fs::create_symlink("a.mtl", "link.mtl");
    EXPECT_EQ(_handler.findFile("model"), "");
    EXPECT_EQ(_handler.findFile("model/folder.mtl"), "");
    EXPECT_EQ(_handler.findFile("pipe.mtl"), "");
    EXPECT_EQ(_handler.findFile("/dev/zero"), "");
    EXPECT_EQ(_handler.findFile("link.mtl"), full("link.mtl"));
}

TEST_F(PathHandlerTest, FolderThatIsNoRegularFileIsPassedOverForALaterOne)
{
    fs::create_directory("model/c.mtl");
    _handler.setBaseFile("model/scene.obj");
    _handler.pushBackPath("list");
    EXPECT_EQ(_handler.findFile("c.mtl"), full("list/c.mtl"));
}

TEST_F(PathHandlerTest, AnyNameIsTakenWithoutFailure)
{
    for(std::string const &name :
        {std::string(1000000, 'x'), std::string("\xff\xfe\x01"), std::string("a.mtl/"),
         std::string("a.mtl/b"), std::string(5000, '/'), std::string("%s%n"), std::string("..")})
    {
        EXPECT_EQ(_handler.findFile(name.c_str()), "");
        _handler.setBaseFile(name.c_str());
        _handler.findFile("a.mtl");
    }
}
} // namespace
