#include "OSGAbsentDesktop.h"

#include <gtest/gtest.h>

using namespace OSG;

TEST(AbsentDesktop, SaysWhatIsMissingOnWayland)
{
    EXPECT_STREQ(make_wayland_desktop()->missing(), "Wayland: no key state, no pointer control");
}

TEST(AbsentDesktop, ServesNothingButItsClock)
{
    AbsentDesktop desktop("a reason");
    int some = 0;
    NativeWindow const window = &some;
    EXPECT_STREQ(desktop.missing(), "a reason");
    desktop.setCapture(window);
    EXPECT_EQ(desktop.getCapture(), nullptr);
    EXPECT_FALSE(desktop.isFocused(window));
    EXPECT_FALSE(desktop.isDown('W'));
    desktop.setPointer({5, 6});
    EXPECT_EQ(desktop.getPointer().x, 0);
    EXPECT_EQ(desktop.getClientSize(window).width, 0);
    EXPECT_EQ(desktop.toScreen(window, {5, 6}).y, 6);
    EXPECT_GT(desktop.getTicksPerSecond(), 0);
    Int64 const before = desktop.getTicks();
    EXPECT_LE(before, desktop.getTicks());
}

TEST(Desktop, IsTheAbsentOneUntilAHostSetsOne)
{
    ASSERT_NE(Desktop::current(), nullptr);
    EXPECT_STREQ(Desktop::current()->missing(), "no desktop: no keys, no pointer");
    auto const mine = std::make_shared<AbsentDesktop>("mine");
    Desktop::setCurrent(mine);
    EXPECT_EQ(Desktop::current(), mine);
    Desktop::setCurrent(nullptr);
    EXPECT_STREQ(Desktop::current()->missing(), "no desktop: no keys, no pointer");
}
