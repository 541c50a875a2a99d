#include "OSGEyePose.h"

#include <cmath>

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "RandomNumbers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
TEST(EyePose, OfAMatrixLooksOneUnitAhead)
{
    Matrix matrix;
    matrix.setTranslate(1, 2, 3);
    EyePose const pose(matrix);
    EXPECT_EQ(pose.from(), Pnt3f(1, 2, 3));
    EXPECT_EQ(pose.at(), Pnt3f(1, 2, 2));
    EXPECT_EQ(pose.up(), Vec3f(0, 1, 0));
}

TEST(EyePose, KnowsItsDirections)
{
    EyePose pose;
    pose.set(Pnt3f(1, 1, 5), Pnt3f(1, 1, 0), Vec3f(0, 3, 0));
    EXPECT_EQ(pose.backward(), Vec3f(0, 0, 1));
    EXPECT_EQ(pose.left(), Vec3f(-1, 0, 0));
    EXPECT_EQ(pose.upward(), Vec3f(0, 1, 0));
}

TEST(EyePose, KeepsItsDistanceWhenItTurns)
{
    RandomNumbers random(33);
    EyePose pose;
    pose.set(Pnt3f(3, -2, 7), Pnt3f(1, 5, 0), Vec3f(0, 1, 0));
    Real32 const distance = (pose.at() - pose.from()).length();
    for(int i = 0; i < 1000; ++i)
    {
        pose.turn(random.real(-0.5f, 0.5f), random.real(-0.5f, 0.5f), random.real(-0.5f, 0.5f));
        EXPECT_EQ(pose.from(), Pnt3f(3, -2, 7));
        EXPECT_NEAR((pose.at() - pose.from()).length(), distance, 1e-3f);
        EXPECT_NEAR(pose.up().length(), 1.f, 1e-3f);
    }
}

TEST(EyePose, StaysWhereTheResultWouldNotBeFinite)
{
    EyePose pose;
    pose.setFrom(Pnt3f(NAN, 0, 0));
    pose.setAt(Pnt3f(0, INFINITY, 0));
    pose.setUp(Vec3f(0, 0, NAN));
    pose.set(Pnt3f(1, 1, 1), Pnt3f(2, 2, 2), Vec3f(NAN, 0, 0));
    pose.move(Vec3f(NAN, 0, 0));
    // The angles that are finite do not turn either.
    pose.turn(NAN, 0.5f, 0.5f);
    pose.turn(0.5f, INFINITY, 0.5f);
    pose.turn(0.5f, 0.5f, NAN);
    EXPECT_EQ(pose.from(), Pnt3f(0, 0, 0));
    EXPECT_EQ(pose.at(), Pnt3f(0, 0, 1));
    EXPECT_EQ(pose.up(), Vec3f(0, 1, 0));
}
} // namespace
