#include "FolderList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TempFolder.h"

using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;
using Viewer::filter_entries;
using Viewer::FolderList;
using Viewer::list_folder;

namespace
{
std::vector<std::string> names(FolderList const &list)
{
    std::vector<std::string> texts;
    for(FolderList::Entry const &entry : list.entries)
        texts.push_back(entry.name + (entry.isFolder ? "/" : entry.isScene ? "*" : ""));
    return texts;
}

struct FolderListTest : testing::Test
{
    TempFolder folder;
};

TEST_F(FolderListTest, FoldersComeFirstThenScenesThenOthers)
{
    folder.write("notes.txt", "");
    folder.write("zebra.OBJ", "");
    folder.write("apple.osb", "");
    folder.write("parts/bolt.obj", "");
    folder.write("Archive/old.obj", "");
    folder.write("no-suffix", "");
    FolderList const list = list_folder(folder.path(""));
    EXPECT_THAT(names(list), ElementsAre("Archive/", "parts/", "apple.osb*", "zebra.OBJ*",
                                         "no-suffix", "notes.txt"));
    EXPECT_EQ(list.reason, "");
}

TEST_F(FolderListTest, NamesWithADotInFrontAreLeftOut)
{
    folder.write(".hidden.obj", "");
    folder.makeFolder(".git");
    EXPECT_THAT(names(list_folder(folder.path(""))), IsEmpty());
}

TEST_F(FolderListTest, AFolderThatIsNotThereHasNoEntriesAndAReason)
{
    FolderList const list = list_folder(folder.path("gone"));
    EXPECT_THAT(list.entries, IsEmpty());
    EXPECT_EQ(list.reason, "No such file or directory");
}

TEST_F(FolderListTest, AFileIsNoFolder)
{
    EXPECT_EQ(list_folder(folder.write("bolt.obj", "")).reason, "Not a directory");
}

TEST_F(FolderListTest, AFolderThatCannotBeOpenedHasAReason)
{
    FolderList const list = list_folder(folder.path(std::string(300, 'x')));
    EXPECT_THAT(list.entries, IsEmpty());
    EXPECT_EQ(list.reason, "File name too long");
}

TEST_F(FolderListTest, BytesThatAreNoUtf8ArePartOfAName)
{
    folder.write("pi\xe8"
                 "ce.obj",
                 "");
    EXPECT_THAT(names(list_folder(folder.path(""))), ElementsAre("pi\xe8"
                                                                 "ce.obj*"));
}

TEST_F(FolderListTest, ALinkThatLeadsNowhereIsAFileAndALinkToAFolderIsAFolder)
{
    folder.makeFolder("parts");
    std::filesystem::create_symlink("nothing.obj", folder.path("broken.obj"));
    std::filesystem::create_symlink("parts", folder.path("same"));
    std::filesystem::create_symlink("circle", folder.path("circle"));
    EXPECT_THAT(names(list_folder(folder.path(""))),
                ElementsAre("parts/", "same/", "broken.obj*", "circle"));
}

TEST_F(FolderListTest, TenThousandFilesAreListedInOrder)
{
    for(int i = 0; i < 10000; ++i)
        folder.write("part" + std::to_string(i) + ".obj", "");
    FolderList const list = list_folder(folder.path(""));
    ASSERT_EQ(list.entries.size(), 10000u);
    EXPECT_TRUE(std::is_sorted(list.entries.begin(), list.entries.end(),
                               [](auto const &left, auto const &right)
                               { return left.name < right.name; }));
    EXPECT_EQ(filter_entries(list, "9999").size(), 1u);
}

TEST_F(FolderListTest, TheFilterLooksForAPartOfANameWhateverItsCase)
{
    folder.write("Bolt.obj", "");
    folder.write("nut.obj", "");
    FolderList const list = list_folder(folder.path(""));
    EXPECT_THAT(filter_entries(list, "OLT"), ElementsAre(0));
    EXPECT_THAT(filter_entries(list, ".obj"), ElementsAre(0, 1));
    EXPECT_THAT(filter_entries(list, ""), ElementsAre(0, 1));
    EXPECT_THAT(filter_entries(list, "wheel"), IsEmpty());
}
} // namespace
