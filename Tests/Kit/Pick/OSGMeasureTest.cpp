#include "OSGMeasure.h"

#include <cmath>
#include <limits>
#include <numbers>

#include <gtest/gtest.h>

#include "RandomNumbers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
constexpr Real32 Nan = std::numeric_limits<Real32>::quiet_NaN();
constexpr Real32 Infinity = std::numeric_limits<Real32>::infinity();

TEST(Measure, ADistanceIsThatOfTheNumbersInDoublePrecision)
{
    EXPECT_EQ(distance_between(Pnt3f(1, 2, 3), Pnt3f(3, 5, 9)), 7);
    EXPECT_EQ(distance_between(Pnt3f(1, 2, 3), Pnt3f(1, 2, 3)), 0);
    // A millimetre at a kilometre, of which single precision would keep nothing.
    Real64 const step = distance_between(Pnt3f(1e6f, 0, 0), Pnt3f(1e6f, 0.001f, 0));
    EXPECT_EQ(step, Real64(0.001f));
    EXPECT_EQ(distance_between(Pnt3f(3e38f, 0, 0), Pnt3f(-3e38f, 0, 0)), 2 * Real64(3e38f));
    EXPECT_EQ(distance_between(Pnt3f(0, 0, 0), Pnt3f(0, 1e-45f, 0)), Real64(1e-45f));
    EXPECT_TRUE(std::isnan(distance_between(Pnt3f(Nan, 0, 0), Pnt3f(0, 0, 0))));
}

TEST(Measure, AnAngleIsExactOnALineAndInACorner)
{
    EXPECT_EQ(angle_between({2, 0, 0}, {0, 0, 0}, {5, 0, 0}), 0);
    EXPECT_EQ(angle_between({2, 0, 0}, {0, 0, 0}, {-5, 0, 0}), 180);
    EXPECT_EQ(angle_between({1, 1, 1}, {0, 1, 1}, {0, 7, 1}), 90);
    RandomNumbers random(7);
    for(int round = 0; round < 500; ++round)
    {
        Pnt3f const middle(static_cast<Real32>(random.below(99)), 0.5f, -3);
        Vec3f const way(random.real(-1, 1), static_cast<Real32>(random.below(9)), 0.25f);
        Vec3f const coarse(std::ldexp(std::round(std::ldexp(way[0], 10)), -10), way[1], way[2]);
        EXPECT_EQ(angle_between(middle + coarse, middle, middle + coarse * 4), 0);
        EXPECT_EQ(angle_between(middle + coarse, middle, middle - coarse * 4), 180);
    }
}

TEST(Measure, ASmallAngleKeepsItsDigits)
{
    Real64 const small = 1e-6;
    std::optional<Real64> const angle = angle_between({1, 0, 0}, {0, 0, 0}, {1, 1e-6f, 0});
    ASSERT_TRUE(angle);
    EXPECT_NEAR(*angle * std::numbers::pi / 180 / small, 1, 1e-6);
    std::optional<Real64> const flat = angle_between({1, 0, 0}, {0, 0, 0}, {-1, 1e-6f, 0});
    ASSERT_TRUE(flat);
    EXPECT_NEAR((180 - *flat) * std::numbers::pi / 180 / small, 1, 1e-6);
}

TEST(Measure, AnAngleWithoutASideIsNone)
{
    EXPECT_FALSE(angle_between({0, 0, 0}, {0, 0, 0}, {1, 0, 0}));
    EXPECT_FALSE(angle_between({1, 0, 0}, {2, 0, 0}, {2, 0, 0}));
    EXPECT_FALSE(angle_between({Nan, 0, 0}, {0, 0, 0}, {1, 0, 0}));
    EXPECT_FALSE(angle_between({1, 0, 0}, {0, 0, 0}, {0, Infinity, 0}));
    EXPECT_TRUE(angle_between({1e-45f, 0, 0}, {0, 0, 0}, {0, 3e38f, 0}));
}
} // namespace
