#include "OSGBandTool.h"

#include <gtest/gtest.h>

using namespace OSG;

namespace
{
struct BandToolTest : testing::Test
{
    void draw(Pnt2f const &from, Pnt2f const &to)
    {
        tool.press({from});
        tool.drag({to});
        tool.release({to, PointerTool::Shift});
    }
    std::vector<BandTool::Band> bands;
    int clicks = 0;
    BandTool tool{[this](BandTool::Band const &band) { bands.push_back(band); },
                  [this](PointerTool::Event const &) { ++clicks; }};
};

TEST_F(BandToolTest, ABandIsARectangleAndADirection)
{
    draw({30, 4}, {10, 20});
    draw({10, 20}, {30, 4});
    ASSERT_EQ(bands.size(), 2u);
    for(BandTool::Band const &band : bands)
    {
        EXPECT_EQ(band.area.left, 10);
        EXPECT_EQ(band.area.top, 4);
        EXPECT_EQ(band.area.right, 30);
        EXPECT_EQ(band.area.bottom, 20);
        EXPECT_EQ(band.modifiers, PointerTool::Shift);
    }
    EXPECT_EQ(bands[0].direction, BandTool::Direction::RightToLeft);
    EXPECT_EQ(bands[1].direction, BandTool::Direction::LeftToRight);
}

TEST_F(BandToolTest, TheHostSeesTheBandWhileItIsDrawn)
{
    EXPECT_FALSE(tool.getBand());
    tool.press({{10, 10}});
    EXPECT_FALSE(tool.getBand());
    tool.drag({{20, 30}});
    ASSERT_TRUE(tool.getBand());
    EXPECT_EQ(tool.getBand()->area.bottom, 30);
    tool.drag({{10, 10}}); // back at the begin it is still a band
    EXPECT_TRUE(tool.getBand());
    tool.cancel();
    EXPECT_FALSE(tool.getBand());
    tool.release({{20, 30}});
    EXPECT_TRUE(bands.empty());
}

TEST_F(BandToolTest, ABandWithoutWidthOrHeightIsNone)
{
    draw({10, 10}, {10, 50});
    draw({10, 10}, {50, 10});
    EXPECT_TRUE(bands.empty());
    EXPECT_EQ(clicks, 0);
}

TEST_F(BandToolTest, APressWithoutMotionIsAClick)
{
    draw({10, 10}, {11, 11});
    EXPECT_TRUE(bands.empty());
    EXPECT_EQ(clicks, 1);
}
} // namespace
