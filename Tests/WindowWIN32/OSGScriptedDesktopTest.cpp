#include "OSGScriptedDesktop.h"

#include <gtest/gtest.h>

using namespace OSG;

namespace
{
struct Scripted : ::testing::Test
{
    int handles[2] = {};
    NativeWindow const window = &handles[0];
    NativeWindow const other = &handles[1];
    ScriptedDesktop desktop;
};

TEST_F(Scripted, ServesEverything) { EXPECT_EQ(desktop.missing(), nullptr); }

TEST_F(Scripted, KeysAreDownFromPressToRelease)
{
    desktop.setKey('W', true);
    desktop.setKey('W', true);
    desktop.setKey(1, true);
    EXPECT_TRUE(desktop.isDown('W'));
    EXPECT_TRUE(desktop.isDown(1));
    EXPECT_FALSE(desktop.isDown('S'));
    desktop.setKey('W', false);
    EXPECT_FALSE(desktop.isDown('W'));
    desktop.releaseAllKeys();
    EXPECT_FALSE(desktop.isDown(1));
}

TEST_F(Scripted, OneWindowHasTheFocusAndNoWindowIsNone)
{
    EXPECT_FALSE(desktop.isFocused(nullptr));
    desktop.setFocus(window);
    EXPECT_TRUE(desktop.isFocused(window));
    EXPECT_FALSE(desktop.isFocused(other));
    desktop.setFocus(nullptr);
    EXPECT_FALSE(desktop.isFocused(window));
    EXPECT_FALSE(desktop.isFocused(nullptr));
}

TEST_F(Scripted, TheCaptureIsReleasedOrLost)
{
    desktop.setCapture(window);
    EXPECT_EQ(desktop.getCapture(), window);
    desktop.loseCapture();
    EXPECT_EQ(desktop.getCapture(), nullptr);
    desktop.setCapture(other);
    desktop.releaseCapture();
    EXPECT_EQ(desktop.getCapture(), nullptr);
}

TEST_F(Scripted, ThePointerIsWhereItWasPutAndShownOrHidden)
{
    desktop.setPointer({-3, 70000});
    EXPECT_EQ(desktop.getPointer().x, -3);
    EXPECT_EQ(desktop.getPointer().y, 70000);
    EXPECT_TRUE(desktop.isPointerVisible());
    desktop.showPointer(false);
    EXPECT_FALSE(desktop.isPointerVisible());
}

TEST_F(Scripted, ClientAreasLieWhereTheyWereSet)
{
    desktop.setWindow(window, {100, 50}, {800, 600});
    EXPECT_EQ(desktop.getClientSize(window).width, 800);
    EXPECT_EQ(desktop.getClientSize(window).height, 600);
    EXPECT_EQ(desktop.toScreen(window, {1, 2}).x, 101);
    EXPECT_EQ(desktop.toScreen(window, {1, 2}).y, 52);
    EXPECT_EQ(desktop.getClientSize(other).width, 0);
    EXPECT_EQ(desktop.toScreen(other, {1, 2}).x, 1);
}

TEST_F(Scripted, TimeIsWhatTheHostSays)
{
    EXPECT_EQ(desktop.getTicksPerSecond(), 1000);
    EXPECT_EQ(desktop.getTicks(), 0);
    desktop.advance(16);
    desktop.advance(16);
    EXPECT_EQ(desktop.getTicks(), 32);
    desktop.setTicks(5);
    EXPECT_EQ(desktop.getTicks(), 5);
    EXPECT_EQ(ScriptedDesktop(0).getTicksPerSecond(), 0);
}

TEST_F(Scripted, KeepsTheTextsForTheDebugger)
{
    desktop.writeDebugText("a");
    desktop.writeDebugText("b\n");
    EXPECT_EQ(desktop.getDebugText(), "ab\n");
}

TEST_F(Scripted, IsTheCurrentDesktopUntilAnotherOneIs)
{
    auto const mine = std::make_shared<ScriptedDesktop>();
    Desktop::setCurrent(mine);
    EXPECT_EQ(Desktop::current(), mine);
    Desktop::setCurrent(nullptr);
    EXPECT_NE(Desktop::current(), mine);
    EXPECT_NE(Desktop::current()->missing(), nullptr);
}
} // namespace
