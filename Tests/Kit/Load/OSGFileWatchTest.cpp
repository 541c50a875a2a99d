#include "OSGFileWatch.h"

#include <chrono>
#include <filesystem>
#include <limits>

#include <gtest/gtest.h>

#include "TempFolder.h"

namespace OSG::Test
{
namespace
{
struct FileWatchTest : testing::Test
{
    /// A look each half second.
    bool look() { return watch.hasChanged(now += 0.5); }

    TempFolder folder;
    std::string const file = folder.write("a.obj", "v 0 0 0\n");
    FileWatch watch{file};
    Real64 now = 10;
    bool const hasBegun = watch.hasChanged(now);
};

TEST_F(FileWatchTest, AFileThatStaysHasNotChanged)
{
    EXPECT_FALSE(hasBegun);
    for(int i = 0; i < 5; ++i)
        EXPECT_FALSE(look());
}

TEST_F(FileWatchTest, AFileWrittenInPlaceHasChangedOnceWhenNobodyWritesAnyMore)
{
    for(char const *text : {"v 0 0 0\nv 1\n", "v 0 0 0\nv 1 0 0\n"})
    {
        folder.write("a.obj", text);
        EXPECT_FALSE(look());
    }
    EXPECT_TRUE(look());
    EXPECT_FALSE(look());
}

TEST_F(FileWatchTest, AFileOfEqualLengthIsToldByItsTime)
{
    std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) +
                                               std::chrono::microseconds(3));
    EXPECT_FALSE(look());
    EXPECT_TRUE(look());
}

TEST_F(FileWatchTest, AFileReplacedByOneOfEqualLengthAndTimeHasChanged)
{
    std::string const other = folder.write("b.obj", "v 9 9 9\n");
    std::filesystem::last_write_time(other, std::filesystem::last_write_time(file));
    std::filesystem::rename(other, file);
    EXPECT_FALSE(look());
    EXPECT_TRUE(look());
}

TEST_F(FileWatchTest, AFileThatVanishesHasNotChangedUntilItComesBackAsAnother)
{
    std::string const aside = folder.path("aside");
    std::filesystem::rename(file, aside);
    for(int i = 0; i < 3; ++i)
        EXPECT_FALSE(look());
    std::filesystem::rename(aside, file); // the same one
    for(int i = 0; i < 3; ++i)
        EXPECT_FALSE(look());
    std::filesystem::remove(file);
    EXPECT_FALSE(look());
    folder.write("a.obj", "v 1 2 3 # longer\n");
    EXPECT_FALSE(look());
    EXPECT_TRUE(look());
}

TEST_F(FileWatchTest, IsLookedAtNoMoreOftenThanEveryHalfSecond)
{
    folder.write("a.obj", "v 0 0 0\nv 1 0 0\n");
    for(int i = 0; i < 63; ++i)
        EXPECT_FALSE(watch.hasChanged(now += 1. / 64)) << i;
    EXPECT_TRUE(watch.hasChanged(now += 1. / 64));
}

TEST_F(FileWatchTest, TimeThatIsNoneLooksAtNothing)
{
    folder.write("a.obj", "v 0 0 0\nv 1 0 0\n");
    for(int i = 0; i < 4; ++i)
        EXPECT_FALSE(watch.hasChanged(std::numeric_limits<Real64>::quiet_NaN()));
}

TEST_F(FileWatchTest, FoldersAndNoFileAreNotThere)
{
    EXPECT_FALSE(stamp_of(folder.makeFolder("folder")).exists);
    EXPECT_FALSE(stamp_of(folder.path("none")).exists);
    EXPECT_FALSE(stamp_of("").exists);
    EXPECT_TRUE(stamp_of(file).exists);
    FileWatch none;
    EXPECT_FALSE(none.hasChanged(0) || none.hasChanged(1));
}
} // namespace
} // namespace OSG::Test
