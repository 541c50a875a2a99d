#include "OSGColor.h"

#include <gmock/gmock.h>

namespace
{
using namespace OSG;

TEST(Color, StartsWithAllNumbersZero)
{
    EXPECT_TRUE(Color3f() == Color3f(0, 0, 0));
    EXPECT_TRUE(Color4f() == Color4f(0, 0, 0, 0));
}

TEST(Color, NumbersOutsideTheVisibleRangeStay)
{
    Color3f color(-5.f, 7.f, 1e38f);
    EXPECT_EQ(color.red(), -5.f);
    EXPECT_EQ(color.green(), 7.f);
    EXPECT_EQ(color.blue(), 1e38f);
    color.setValuesRGB(1, 2, 3);
    EXPECT_EQ(color[1], 2.f);
    EXPECT_EQ(color.values()[2], 3.f);
}

TEST(Color, AlphaIsTheFourthNumber)
{
    Color4f color(Color3f(1, 2, 3), 4.f);
    EXPECT_EQ(color.alpha(), 4.f);
    EXPECT_TRUE(color.rgb() == Color3f(1, 2, 3));
    color.setValuesRGBA(4, 3, 2, 1);
    EXPECT_TRUE(color == Color4f(4, 3, 2, 1));
    EXPECT_FALSE(color == Color4f(4, 3, 2, 0));
}
} // namespace
