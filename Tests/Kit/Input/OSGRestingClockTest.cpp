#include "OSGRestingClock.h"

#include <gtest/gtest.h>

#include "OSGScriptedDesktop.h"

namespace OSG::Test
{
namespace
{
struct RestingClockTest : testing::Test
{
    std::shared_ptr<ScriptedDesktop> truth = std::make_shared<ScriptedDesktop>(1000);
    std::shared_ptr<WatchedDesktop> desktop = std::make_shared<WatchedDesktop>(truth);
};

TEST_F(RestingClockTest, TheClockStandsStillWhileItRestsAndGoesOnFromThere)
{
    RestingClock clock(desktop);
    truth->setTicks(100);
    EXPECT_EQ(desktop->getTicks(), 100);
    clock.rest();
    truth->setTicks(5000);
    EXPECT_EQ(desktop->getTicks(), 100);
    clock.wake();
    EXPECT_EQ(desktop->getTicks(), 100);
    truth->setTicks(5016);
    EXPECT_EQ(desktop->getTicks(), 116);
}

TEST_F(RestingClockTest, RestsAddUpAndASecondCallCountsAsNone)
{
    RestingClock clock(desktop);
    for(Int64 const begin : {10, 1010})
    {
        truth->setTicks(begin);
        clock.rest();
        truth->setTicks(begin + 500);
        clock.rest();
        truth->setTicks(begin + 990);
        clock.wake();
        clock.wake();
    }
    truth->setTicks(2010);
    EXPECT_EQ(desktop->getTicks(), 30);
}

TEST_F(RestingClockTest, KeysAndFocusAreThoseOfTheDesktopBehind)
{
    RestingClock clock(desktop);
    EXPECT_FALSE(desktop->isDown('W'));
    truth->setKey('W', true);
    EXPECT_TRUE(desktop->isDown('W'));
    int window = 0;
    truth->setFocus(&window);
    EXPECT_TRUE(desktop->isFocused(&window));
    EXPECT_FALSE(desktop->isFocused(nullptr));
}

TEST_F(RestingClockTest, AfterItsEndTheClockIsTheTrueOne)
{
    {
        RestingClock clock(desktop);
        clock.rest();
        truth->setTicks(700);
    }
    EXPECT_EQ(desktop->getTicks(), 700);
}
} // namespace
} // namespace OSG::Test
