#include "FileChooser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TempFolder.h"

using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using Viewer::FileChooser;

namespace
{
std::vector<std::string> shown(FileChooser const &chooser)
{
    std::vector<std::string> names;
    for(std::size_t number : chooser.getShown())
        names.push_back(chooser.getList().entries[number].name);
    return names;
}

struct FileChooserTest : testing::Test
{
    FileChooserTest()
    {
        folder.write("bolt.obj", "");
        folder.write("nut.obj", "");
        folder.write("parts/wheel.obj", "");
    }
    TempFolder folder;
    FileChooser chooser;
};

TEST_F(FileChooserTest, OpensInTheFolderOfTheFileThatIsShown)
{
    chooser.begin(FileChooser::Purpose::Open, folder.path("nut.obj"));
    EXPECT_TRUE(chooser.isAsking());
    EXPECT_THAT(shown(chooser), ElementsAre("parts", "bolt.obj", "nut.obj"));
}

TEST_F(FileChooserTest, WhatIsTypedChoosesAmongTheEntries)
{
    chooser.begin(FileChooser::Purpose::Open, folder.path("nut.obj"));
    chooser.type("nu");
    EXPECT_THAT(shown(chooser), ElementsAre("nut.obj"));
    EXPECT_THAT(chooser.accept(), Optional(folder.path("nut.obj")));
    EXPECT_FALSE(chooser.isAsking());
}

TEST_F(FileChooserTest, AFolderIsEnteredAndLeftAgain)
{
    chooser.begin(FileChooser::Purpose::Open, folder.path("nut.obj"));
    chooser.type("par");
    EXPECT_EQ(chooser.accept(), std::nullopt);
    EXPECT_EQ(chooser.getTyped(), "");
    EXPECT_THAT(shown(chooser), ElementsAre("wheel.obj"));
    chooser.enterParent();
    EXPECT_THAT(shown(chooser), ElementsAre("parts", "bolt.obj", "nut.obj"));
    EXPECT_EQ(chooser.getAtHand(), 0u);
}

TEST_F(FileChooserTest, ThePathOfAFileMayBeTyped)
{
    chooser.begin(FileChooser::Purpose::Open, "/");
    chooser.type(folder.path("parts/wheel.obj"));
    EXPECT_THAT(chooser.accept(), Optional(folder.path("parts/wheel.obj")));
}

TEST_F(FileChooserTest, KeysStepThroughTheEntriesAndStopAtTheEnds)
{
    chooser.begin(FileChooser::Purpose::Open, folder.path("nut.obj"));
    chooser.step(1);
    EXPECT_EQ(chooser.getAtHand(), 1u);
    chooser.step(10);
    EXPECT_EQ(chooser.getAtHand(), 2u);
    chooser.step(-10);
    EXPECT_EQ(chooser.getAtHand(), 0u);
    chooser.step(2);
    EXPECT_THAT(chooser.accept(), Optional(folder.path("nut.obj")));
}

TEST_F(FileChooserTest, NothingIsAcceptedWhereNothingIsShown)
{
    chooser.begin(FileChooser::Purpose::Open, folder.path("nut.obj"));
    chooser.type("gear");
    chooser.step(1);
    chooser.take(3);
    EXPECT_EQ(chooser.accept(), std::nullopt);
    EXPECT_TRUE(chooser.isAsking());
}

TEST_F(FileChooserTest, ANameThatNoFileHasIsSaidToBeNone)
{
    chooser.begin(FileChooser::Purpose::Open, folder.path("nut.obj"));
    EXPECT_EQ(chooser.getNote(), "");
    for(std::string const &none : {std::string("gear"), folder.path("gear.obj"),
                                   folder.path("parts/gear.obj"), std::string("~/gear/none.obj")})
    {
        chooser.type(none);
        EXPECT_EQ(chooser.getNote(), "There is no such file.") << none;
    }
    for(std::string const &some :
        {std::string("nu"), std::string(), folder.path("parts"), folder.path("parts/wheel.obj")})
    {
        chooser.type(some);
        EXPECT_EQ(chooser.getNote(), "") << some;
    }
}

TEST_F(FileChooserTest, AFolderThatHasVanishedGivesItsParent)
{
    chooser.begin(FileChooser::Purpose::Open, folder.path("gone/deeper/gear.obj"));
    EXPECT_THAT(shown(chooser), ElementsAre("parts", "bolt.obj", "nut.obj"));
    chooser.type("parts");
    std::filesystem::remove_all(folder.path("parts"));
    EXPECT_THAT(chooser.accept(), Optional(folder.path("parts"))); // the reader says what is wrong
    chooser.enter(folder.path("parts"));
    EXPECT_THAT(shown(chooser), IsEmpty());
    EXPECT_EQ(chooser.getList().reason, "No such file or directory");
}

TEST_F(FileChooserTest, SavingProposesABinarySceneOfTheSameName)
{
    chooser.begin(FileChooser::Purpose::Save, folder.path("nut.obj"));
    EXPECT_EQ(chooser.getTyped(), "nut.osb");
    EXPECT_THAT(chooser.accept(), Optional(folder.path("nut.osb")));
}

TEST_F(FileChooserTest, AFileIsReplacedOnlyAfterAQuestion)
{
    chooser.begin(FileChooser::Purpose::Save, folder.path("nut.obj"));
    chooser.type("bolt.obj");
    EXPECT_EQ(chooser.accept(), std::nullopt);
    EXPECT_THAT(chooser.getReplaced(), Optional(folder.path("bolt.obj")));
    chooser.decline();
    EXPECT_EQ(chooser.getReplaced(), std::nullopt);
    EXPECT_EQ(chooser.confirm(), std::nullopt);
    EXPECT_TRUE(chooser.isAsking());
    chooser.accept();
    EXPECT_THAT(chooser.confirm(), Optional(folder.path("bolt.obj")));
    EXPECT_FALSE(chooser.isAsking());
}

TEST_F(FileChooserTest, ANameWithoutASuffixThatIsWrittenBecomesABinaryScene)
{
    std::pair<char const *, char const *> const names[] = {
        {"gear", "gear.osb"},         {"gear.v2", "gear.v2.osb"},
        {"gear.obj", "gear.obj"},     {"gear.osb", "gear.osb"},
        {"gear.3ds", "gear.3ds.osb"}, {"parts/gear.obj", "parts/gear.obj"}};
    for(auto const &[typed, file] : names)
    {
        chooser.begin(FileChooser::Purpose::Save, folder.path("nut.obj"));
        chooser.type(typed);
        std::string const name = std::filesystem::path(file).filename().string();
        bool const isOther = std::string_view(typed) != file;
        EXPECT_EQ(chooser.getNote(), isOther ? "Will be saved as " + name + '.' : "");
        EXPECT_THAT(chooser.accept(), Optional(folder.path(file))) << typed;
    }
}

TEST_F(FileChooserTest, SavingToNoNameDoesNothingAndToAFolderEntersIt)
{
    chooser.begin(FileChooser::Purpose::Save, folder.path("nut.obj"));
    chooser.type("");
    EXPECT_EQ(chooser.getNote(), "");
    EXPECT_EQ(chooser.accept(), std::nullopt);
    chooser.type("parts");
    EXPECT_EQ(chooser.getNote(), "");
    EXPECT_EQ(chooser.accept(), std::nullopt);
    EXPECT_THAT(shown(chooser), ElementsAre("wheel.obj"));
    EXPECT_TRUE(chooser.isAsking());
}

TEST_F(FileChooserTest, AClickTakesTheNameOfAFileToSave)
{
    chooser.begin(FileChooser::Purpose::Save, folder.path("nut.obj"));
    chooser.take(0); // a folder
    EXPECT_EQ(chooser.getTyped(), "nut.osb");
    chooser.type("model.stl");
    chooser.take(1);
    EXPECT_EQ(chooser.getTyped(), "bolt.obj");
    EXPECT_EQ(chooser.getNote(), "");
}
} // namespace
