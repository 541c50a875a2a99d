#include "MeasureMarks.h"

#include <gtest/gtest.h>

#include <limits>

using namespace OSG;

namespace
{
struct MeasureMarksTest : testing::Test
{
    UInt32 numShown() const { return view.getOverlayOnTop()->getNChildren(); }

    SceneView view;
    Viewer::MeasureMarks marks{view};
};

TEST_F(MeasureMarksTest, EachPointHasADiscAndEachPairOfNeighboursALine)
{
    EXPECT_TRUE(marks.show({{0, 0, 0}}));
    EXPECT_EQ(numShown(), 1u);
    EXPECT_TRUE(marks.show({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}));
    EXPECT_EQ(numShown(), 5u);
    EXPECT_TRUE(marks.show({}));
    EXPECT_EQ(numShown(), 0u);
}

TEST_F(MeasureMarksTest, TheSamePointsAreNoChange)
{
    EXPECT_FALSE(marks.show({}));
    marks.show({{0, 0, 0}, {1, 0, 0}});
    EXPECT_FALSE(marks.show({{0, 0, 0}, {1, 0, 0}}));
}

TEST_F(MeasureMarksTest, PointsThatAreNotFiniteAreNotShown)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(marks.show({{0, 0, 0}, {nan, 0, 0}}));
    EXPECT_EQ(numShown(), 1u);
    EXPECT_FALSE(marks.show({{0, 0, 0}, {nan, 0, 0}}));
}
} // namespace
