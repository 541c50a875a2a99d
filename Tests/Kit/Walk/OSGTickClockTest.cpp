#include "OSGTickClock.h"

#include <limits>

#include <gtest/gtest.h>

using namespace OSG;

namespace
{
constexpr Real64 Nan = std::numeric_limits<Real64>::quiet_NaN();
constexpr Real64 Infinity = std::numeric_limits<Real64>::infinity();

TEST(TickClock, CountsTheTicksBetweenItsCalls)
{
    TickClock clock;
    EXPECT_EQ(clock.take(40, 125), 0u); // counting begins
    EXPECT_EQ(clock.take(40.25, 125), 2u);
    EXPECT_EQ(clock.take(40.3125, 125), 0u);
    EXPECT_EQ(clock.take(40.375, 125), 1u); // the halves of two calls
}

TEST(TickClock, BeginsAnewWhenItIsRestarted)
{
    TickClock clock;
    clock.take(1, 125);
    clock.take(1.0625, 125);
    clock.restart();
    EXPECT_EQ(clock.take(1.5, 125), 0u);
    EXPECT_EQ(clock.take(1.5625, 125), 0u); // without the half of before
    EXPECT_EQ(clock.take(1.625, 125), 1u);
}

TEST(TickClock, ALongPauseCountsForASecond)
{
    TickClock clock;
    clock.take(0, 125);
    EXPECT_EQ(clock.take(7200, 125), 8u);
    EXPECT_EQ(clock.take(7200.125, 125), 1u);
    EXPECT_EQ(clock.take(1e300, 1), 1000u);
}

TEST(TickClock, TimeThatRunsBackwardsOrIsNoneBringsNoTick)
{
    TickClock clock;
    clock.take(10, 125);
    EXPECT_EQ(clock.take(3, 125), 0u);
    EXPECT_EQ(clock.take(3.125, 125), 1u);
    for(Real64 const seconds : {Nan, Infinity, -Infinity})
        EXPECT_EQ(clock.take(seconds, 125), 0u);
    EXPECT_EQ(clock.take(3.25, 125), 1u);
}

TEST(TickClock, ATickTimeOfZeroIsATickInEachCall)
{
    TickClock clock;
    EXPECT_EQ(clock.take(5, 0), 0u);
    EXPECT_EQ(clock.take(5, 0), 1u);
    EXPECT_EQ(clock.take(9, 0), 1u);
}

TEST(TickClock, ATickLongerThanASecondComesInTime)
{
    TickClock clock;
    clock.take(0, 1500);
    EXPECT_EQ(clock.take(1, 1500), 0u);
    EXPECT_EQ(clock.take(1.5, 1500), 1u);
}
} // namespace
