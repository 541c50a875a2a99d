#include "OSGMeasureTool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "MathPrinters.h"

using namespace OSG;
using testing::ElementsAre;

namespace
{
struct MeasureToolTest : testing::Test
{
    /// The scene lies under the pixels right of 0.
    static std::optional<Pnt3f> pick(PointerTool::Event const &click)
    {
        if(click.pixel[0] < 0)
            return std::nullopt;
        return Pnt3f(click.pixel[0], click.pixel[1], 7);
    }
    void click(MeasureTool &tool, Real32 x)
    {
        tool.press({{x, 0}});
        tool.release({{x, 0}});
    }
    std::vector<std::vector<Pnt3f>> measured;
    MeasureTool::OnMeasured const onMeasured = [this](std::vector<Pnt3f> const &points)
    { measured.push_back(points); };
};

TEST_F(MeasureToolTest, GivesAsManyPointsAsItIsAskedFor)
{
    MeasureTool distance(2, &pick, onMeasured);
    MeasureTool angle(3, &pick, onMeasured);
    for(Real32 x : {1.f, 2.f, 3.f})
    {
        click(distance, x);
        click(angle, x);
    }
    ASSERT_EQ(measured.size(), 2u);
    EXPECT_THAT(measured[0], ElementsAre(Pnt3f(1, 0, 7), Pnt3f(2, 0, 7)));
    EXPECT_THAT(measured[1], ElementsAre(Pnt3f(1, 0, 7), Pnt3f(2, 0, 7), Pnt3f(3, 0, 7)));
    EXPECT_THAT(distance.getPoints(), ElementsAre(Pnt3f(3, 0, 7)));
    EXPECT_TRUE(distance.isBusy());
    EXPECT_FALSE(angle.isBusy());
}

TEST_F(MeasureToolTest, AClickBesideTheSceneAndADragDoNotCount)
{
    MeasureTool tool(2, &pick, onMeasured);
    click(tool, 1);
    click(tool, -1);
    tool.press({{2, 0}});
    tool.drag({{20, 0}});
    tool.release({{2, 0}});
    EXPECT_EQ(tool.getPoints().size(), 1u);
    click(tool, 5);
    EXPECT_EQ(measured.size(), 1u);
}

TEST_F(MeasureToolTest, CancelForgetsThePoints)
{
    MeasureTool tool(2, &pick, onMeasured);
    click(tool, 1);
    tool.cancel();
    EXPECT_FALSE(tool.isBusy());
    click(tool, 2);
    EXPECT_TRUE(measured.empty());
}

TEST_F(MeasureToolTest, NoPointsAreOne)
{
    MeasureTool tool(0, &pick, onMeasured);
    click(tool, 1);
    EXPECT_EQ(measured.size(), 1u);
    MeasureTool blind(2, {}, {});
    click(blind, 1);
    EXPECT_TRUE(blind.getPoints().empty());
}
} // namespace
