#include "OSGWalkLook.h"

#include <cmath>

#include <gtest/gtest.h>

#include "MathPrinters.h"

using namespace OSG;

namespace
{
TEST(WalkLook, AnglesAreThoseBetweenTheVectors)
{
    EXPECT_NEAR(WalkLook::angle_between({1, 0, 0}, {0, 5, 0}), 1.5707963f, 1e-6);
    EXPECT_NEAR(WalkLook::angle_between({1, 0, 0}, {3, 3, 0}), 0.7853982f, 1e-6);
    EXPECT_NEAR(WalkLook::angle_between({1, 0, 0}, {-3, 3, 0}), 2.3561945f, 1e-6);
}

TEST(WalkLook, AnglesAtTheEndsAreExact)
{
    EXPECT_EQ(WalkLook::angle_between({1, 2, 3}, {2, 4, 6}), 0.f);
    EXPECT_EQ(WalkLook::angle_between({1, 2, 3}, {-2, -4, -6}), 3.1415927f);
    EXPECT_EQ(WalkLook::angle_between({1, 0, 0}, {1, 1e-4f, 0}), 0.f);
    EXPECT_GT(WalkLook::angle_between({1, 0, 0}, {1, 2e-3f, 0}), 0.f);
}

TEST(WalkLook, TheAngleToNothingIsZero)
{
    EXPECT_EQ(WalkLook::angle_between({0, 1, 0}, {1e-6f, -1e-6f, 1e-6f}), 0.f);
    EXPECT_EQ(WalkLook::angle_between({1e-6f, -1e-6f, 1e-6f}, {0, 1, 0}), 0.f);
    EXPECT_NEAR(WalkLook::angle_between({1.1e-6f, 0, 0}, {0, 1, 0}), 1.5707963f, 1e-6);
    EXPECT_TRUE(std::isnan(WalkLook::angle_between({NAN, 1, 1}, {0, 1, 0})));
}

TEST(WalkLook, TurnsGoToTheRightAndDown)
{
    Pnt3f const right = WalkLook::turned({0, 0, 0}, {0, 0, -2}, {0, 1, 0}, 1.5707963f, 0);
    EXPECT_TRUE(right.equals(Pnt3f(2, 0, 0), 1e-5f));
    Pnt3f const down = WalkLook::turned({0, 0, 0}, {0, 0, -2}, {0, 1, 0}, 0, 0.5235988f);
    EXPECT_TRUE(down.equals(Pnt3f(0, -1, -1.7320508f), 1e-5f));
}

// The component along up stays, the horizontal one is the cosine of 85 degrees.
TEST(WalkLook, SteepViewsAreBent)
{
    for(Real32 const sign : {1.f, -1.f})
    {
        Pnt3f const at = WalkLook::turned({0, 0, 0}, {0, 0, -2}, {0, 3, 0}, 0, sign * 1.52f);
        Real32 const level = std::cos(1.4835298f);
        Real32 const rise = std::sin(1.52f);
        Real32 const length = std::hypot(level, rise);
        EXPECT_NEAR(at[1], -sign * 2 * rise / length, 1e-5);
        EXPECT_NEAR(at[2], -2 * level / length, 1e-5);
    }
    // Just below the limit a view is left alone.
    Pnt3f const free = WalkLook::turned({0, 0, 0}, {0, 0, -2}, {0, 1, 0}, 0, 1.4834f);
    EXPECT_NEAR(free[2], -2 * std::cos(1.4834f), 1e-5);
}

// A turn over the top is bent to the side that it came from.
TEST(WalkLook, AViewNeverPassesTheVertical)
{
    Pnt3f const at = WalkLook::turned({0, 0, 0}, {0, 0, -2}, {0, 1, 0}, 0, -1.7f);
    EXPECT_LT(at[2], 0);
    EXPECT_GT(at[1], 1.9f);
}

TEST(WalkLook, ThePitchToTheHorizonIsAShareOfTheAngle)
{
    Pnt3f const raised(0, std::sin(0.6f), -std::cos(0.6f));
    EXPECT_NEAR(WalkLook::pitch_to_horizon({0, 0, 0}, raised, {0, 2, 0}, 1), 0.6f, 1e-6);
    EXPECT_NEAR(WalkLook::pitch_to_horizon({0, 0, 0}, raised, {0, 2, 0}, 0.25f), 0.15f, 1e-6);
    EXPECT_NEAR(WalkLook::pitch_to_horizon({0, 0, 0}, {0, -1, 0}, {0, 1, 0}, 1), -1.5707963f, 1e-6);
    EXPECT_NEAR(WalkLook::pitch_to_horizon({0, 0, 0}, {0, 0, -3}, {0, 1, 0}, 1), 0, 1e-7);
}
} // namespace
