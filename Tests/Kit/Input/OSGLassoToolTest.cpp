#include "OSGLassoTool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "MathPrinters.h"

using namespace OSG;
using testing::ElementsAre;

namespace
{
struct LassoToolTest : testing::Test
{
    std::vector<LassoTool::Lasso> lassos;
    LassoTool tool{[this](LassoTool::Lasso const &lasso) { lassos.push_back(lasso); }};
};

TEST_F(LassoToolTest, GivesTheCornersOfTheDrag)
{
    tool.press({{0, 0}});
    tool.drag({{10, 0}});
    tool.drag({{11, 0}}); // too near
    EXPECT_THAT(tool.getCorners(), ElementsAre(Pnt2f(0, 0), Pnt2f(10, 0)));
    tool.drag({{10, 10}});
    tool.release({{0, 10}, PointerTool::Alt});
    ASSERT_EQ(lassos.size(), 1u);
    EXPECT_THAT(lassos[0].corners,
                ElementsAre(Pnt2f(0, 0), Pnt2f(10, 0), Pnt2f(10, 10), Pnt2f(0, 10)));
    EXPECT_EQ(lassos[0].modifiers, PointerTool::Alt);
    EXPECT_TRUE(tool.getCorners().empty());
}

TEST_F(LassoToolTest, FewerThanThreeCornersAreNone)
{
    tool.press({{0, 0}});
    tool.drag({{10, 0}});
    tool.release({{10, 0}});
    EXPECT_TRUE(lassos.empty());
    tool.press({{50, 50}});
    tool.drag({{60, 50}});
    EXPECT_THAT(tool.getCorners(), ElementsAre(Pnt2f(50, 50), Pnt2f(60, 50)));
}

TEST_F(LassoToolTest, WhatIsCancelledIsForgotten)
{
    tool.press({{0, 0}});
    tool.drag({{10, 0}});
    tool.drag({{10, 10}});
    tool.cancel();
    EXPECT_TRUE(tool.getCorners().empty());
    tool.release({{0, 10}});
    EXPECT_TRUE(lassos.empty());
}
} // namespace
