#include "OSGMipmaps.h"

#include <gtest/gtest.h>

namespace OSG::Test
{
namespace
{
std::vector<UInt8> half(UInt32 width, UInt32 height, UInt32 channels,
                        std::vector<UInt8> const &pixels)
{
    return half_picture(width, height, channels, pixels.data()).pixels;
}

TEST(HalfPicture, IsTheMeanOfFourPixels)
{
    EXPECT_EQ(half(2, 2, 1, {0, 1, 2, 4}), (std::vector<UInt8>{2}));
    EXPECT_EQ(half(4, 2, 1, {0, 0, 8, 8, 0, 2, 8, 10}), (std::vector<UInt8>{1, 9}));
}

TEST(HalfPicture, KeepsChannelsApart)
{
    EXPECT_EQ(half(2, 1, 3, {0, 10, 20, 2, 30, 255}), (std::vector<UInt8>{1, 20, 138}));
}

TEST(HalfPicture, SharesThePixelsOfAnOddRow)
{
    // Five pixels become two: each covers two and a half.
    EXPECT_EQ(half(5, 1, 1, {10, 20, 30, 40, 50}), (std::vector<UInt8>{18, 42}));
    // Three become one.
    EXPECT_EQ(half(3, 1, 1, {0, 30, 90}), (std::vector<UInt8>{40}));
}

TEST(HalfPicture, HasAtLeastOnePixel)
{
    PixelRows const column = half_picture(1, 4, 1, std::vector<UInt8>{1, 3, 5, 7}.data());
    EXPECT_EQ(column.width, 1u);
    EXPECT_EQ(column.height, 2u);
    EXPECT_EQ(column.pixels, (std::vector<UInt8>{2, 6}));
}
} // namespace
} // namespace OSG::Test
