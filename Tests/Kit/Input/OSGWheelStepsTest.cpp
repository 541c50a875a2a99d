#include "OSGWheelSteps.h"

#include <limits>

#include <gtest/gtest.h>

using OSG::WheelSteps;

namespace
{
TEST(WheelSteps, FractionsAreCollectedToWholeSteps)
{
    WheelSteps wheel;
    EXPECT_EQ(wheel.take(0.5), 0);
    EXPECT_EQ(wheel.take(0.75), 1);
    EXPECT_EQ(wheel.take(0.75), 1);
    EXPECT_EQ(wheel.take(-0.5), 0);
    EXPECT_EQ(wheel.take(-2.5), -3);
}

TEST(WheelSteps, ACallCountsForAHundredStepsAtMostAndNoNumberForNone)
{
    WheelSteps wheel;
    EXPECT_EQ(wheel.take(1e30), 100);
    EXPECT_EQ(wheel.take(-1e30), -100);
    EXPECT_EQ(wheel.take(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(wheel.take(std::numeric_limits<double>::infinity()), 0);
    EXPECT_EQ(wheel.take(1), 1);
}
} // namespace
