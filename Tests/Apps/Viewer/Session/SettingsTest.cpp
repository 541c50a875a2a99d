#include "Settings.h"

#include <cstdlib>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TempFolder.h"

using namespace OSG::Test;
using testing::EndsWith;
using testing::IsEmpty;
using Viewer::Settings;

namespace
{
/// Settings in folders of their own.
struct SettingsTest : testing::Test
{
    SettingsTest()
    {
        setenv("XDG_CONFIG_HOME", folder.path("config").c_str(), 1);
        setenv("XDG_STATE_HOME", folder.path("state").c_str(), 1);
    }
    ~SettingsTest() override
    {
        unsetenv("XDG_CONFIG_HOME");
        unsetenv("XDG_STATE_HOME");
    }
    Settings loaded()
    {
        Settings settings;
        complaint = settings.load();
        return settings;
    }

    TempFolder folder;
    std::string complaint;
};

TEST_F(SettingsTest, WhatIsSavedIsLoaded)
{
    for(Viewer::StyleName const &name : Viewer::style_names())
    {
        Settings settings;
        settings.isDark = false;
        settings.samples = 8;
        settings.sceneUp = OSG::SceneUp::Z;
        settings.style = name.style;
        settings.showsEdges = true;
        settings.recentFiles = {"/a.obj", "/b.obj"};
        ASSERT_EQ(settings.save(), "");
        Settings const back = loaded();
        EXPECT_EQ(complaint, "");
        EXPECT_FALSE(back.isDark);
        EXPECT_EQ(back.samples, 8);
        EXPECT_EQ(back.sceneUp, OSG::SceneUp::Z);
        EXPECT_EQ(back.style, name.style);
        EXPECT_TRUE(back.showsEdges);
        EXPECT_EQ(back.recentFiles, settings.recentFiles);
    }
}

TEST_F(SettingsTest, WithoutAFileTheSettingsStayAsTheyAre)
{
    EXPECT_TRUE(loaded().isDark);
    EXPECT_EQ(complaint, "");
}

TEST_F(SettingsTest, ValuesThatAreNoneLeaveTheSettings)
{
    folder.write("config/tolvanite/viewer.json",
                 R"({"style": "melted", "edges": 1, "samples": 1000, "up": "x", "dark": "no"})");
    Settings const settings = loaded();
    EXPECT_EQ(complaint, "");
    EXPECT_EQ(settings.style, OSG::DrawStyle::Shaded);
    EXPECT_FALSE(settings.showsEdges);
    EXPECT_EQ(settings.samples, 16);
    EXPECT_EQ(settings.sceneUp, OSG::SceneUp::Y);
    EXPECT_TRUE(settings.isDark);
}

TEST_F(SettingsTest, ABrokenFileIsNamedInALine)
{
    folder.write("config/tolvanite/viewer.json", "{\"dark\": ");
    EXPECT_TRUE(loaded().isDark);
    EXPECT_THAT(complaint, EndsWith("viewer.json is broken and was not read"));
}

TEST_F(SettingsTest, TheNewestTenFilesAreKeptEachOnce)
{
    Settings settings;
    for(int i = 0; i < 12; ++i)
        settings.noteFile("/model" + std::to_string(i) + ".obj");
    settings.noteFile("/model5.obj");
    ASSERT_EQ(settings.recentFiles.size(), Settings::MostRecentFiles);
    EXPECT_EQ(settings.recentFiles[0], "/model5.obj");
    EXPECT_EQ(settings.recentFiles[1], "/model11.obj");
    EXPECT_EQ(settings.recentFiles.back(), "/model2.obj");
}
} // namespace
