#include "OSGPickTool.h"

#include <gtest/gtest.h>

#include "MathPrinters.h"

using namespace OSG;

namespace
{
struct PickToolTest : testing::Test
{
    PickTool tool{[this](PointerTool::Event const &click) { clicks.push_back(click); }};
    std::vector<PointerTool::Event> clicks;
};

TEST_F(PickToolTest, AClickIsThePlaceOfThePressWithTheModifiersOfTheRelease)
{
    tool.press({{10, 20}, PointerTool::Shift});
    tool.drag({{11, 21}});
    EXPECT_TRUE(tool.isBusy());
    tool.release({{12, 21}, PointerTool::Control});
    EXPECT_FALSE(tool.isBusy());
    ASSERT_EQ(clicks.size(), 1u);
    EXPECT_EQ(clicks[0].pixel, Pnt2f(10, 20));
    EXPECT_EQ(clicks[0].modifiers, PointerTool::Control);
}

TEST_F(PickToolTest, ADragIsNoClickEvenIfItComesBack)
{
    tool.press({{10, 20}});
    tool.drag({{10 + PickTool::ClickRadius + 0.5f, 20}});
    tool.release({{10, 20}});
    EXPECT_TRUE(clicks.empty());
    tool.press({{10, 20}});
    tool.release({{40, 20}});
    EXPECT_TRUE(clicks.empty());
}

TEST_F(PickToolTest, WhatIsCancelledOrNeverBeganGivesNothing)
{
    tool.press({{10, 20}});
    tool.cancel();
    tool.drag({{10, 20}});
    tool.release({{10, 20}});
    tool.release({{10, 20}});
    EXPECT_TRUE(clicks.empty());
}

TEST_F(PickToolTest, TheNavigateToolGivesClicksAndSharesTheDrag)
{
    NavigateTool navigate([this](PointerTool::Event const &click) { clicks.push_back(click); });
    EXPECT_TRUE(navigate.sharesDrag());
    EXPECT_FALSE(tool.sharesDrag());
    navigate.press({{1, 2}});
    navigate.release({{1, 2}});
    EXPECT_EQ(clicks.size(), 1u);
}

TEST_F(PickToolTest, NobodyNeedsToListen)
{
    PickTool deaf({});
    deaf.press({{1, 2}});
    deaf.release({{1, 2}});
    EXPECT_FALSE(deaf.isBusy());
}
} // namespace
