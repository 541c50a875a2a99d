#include <gtest/gtest.h>

#include "TriangleRaster.h"

namespace OSG::Test
{
namespace
{
// A picture of 4 by 4 pixels; normalised coordinates step by 0.5 a pixel.
constexpr UInt32 Size = 4;

TriangleRaster left_bottom_half()
{
    return TriangleRaster({Vec4d(-1, -1, 0, 1), Vec4d(1, -1, 0, 1), Vec4d(-1, 1, 0, 1)}, Size,
                          Size);
}

TEST(TriangleRaster, HalfOfAPictureCoversThePixelsBelowTheDiagonal)
{
    TriangleRaster const raster = left_bottom_half();
    EXPECT_TRUE(raster.at(0, 3).inside);
    EXPECT_TRUE(raster.at(2, 3).inside);
    EXPECT_FALSE(raster.at(3, 2).inside);
    EXPECT_FALSE(raster.at(2, 0).inside);
}
TEST(TriangleRaster, DistancesFromEdgesAreInPixels)
{
    EXPECT_NEAR(left_bottom_half().at(0, 2).edgeDistance, 0.5, 1e-12);
    EXPECT_NEAR(left_bottom_half().at(1, 2).edgeDistance, std::sqrt(0.5), 1e-12);
    EXPECT_NEAR(left_bottom_half().at(3, 2).edgeDistance, -std::sqrt(0.5), 1e-12);
}
TEST(TriangleRaster, WeightsAreSharesOfTheCorners)
{
    Vec3d const weights = left_bottom_half().at(1, 2).weights;
    EXPECT_NEAR(weights[0], 1 - 1.5 / 4 - 1.5 / 4, 1e-12);
    EXPECT_NEAR(weights[1], 1.5 / 4, 1e-12);
    EXPECT_NEAR(weights[2], 1.5 / 4, 1e-12);
}
TEST(TriangleRaster, TheRangeHoldsTheTriangleAndAPixelAround)
{
    TriangleRaster const small(
        {Vec4d(0.25, 0.25, 0, 1), Vec4d(0.5, 0.25, 0, 1), Vec4d(0.5, 0.5, 0, 1)}, 80, 40);
    TriangleRaster::Range const range = small.range();
    EXPECT_EQ(range.left, 49u);
    EXPECT_EQ(range.right, 62u);
    EXPECT_EQ(range.top, 9u);
    EXPECT_EQ(range.bottom, 17u);
}
TEST(TriangleRaster, OrientationIsThatOfThePicture)
{
    EXPECT_TRUE(left_bottom_half().isCounterClockwise());
    TriangleRaster const turned({Vec4d(-1, -1, 0, 1), Vec4d(-1, 1, 0, 1), Vec4d(1, -1, 0, 1)}, Size,
                                Size);
    EXPECT_FALSE(turned.isCounterClockwise());
    EXPECT_TRUE(turned.at(0, 3).inside);
}
TEST(TriangleRaster, ATriangleFromItsEdgeIsEmpty)
{
    TriangleRaster const line({Vec4d(-1, 0, 0, 1), Vec4d(0, 0, 0, 1), Vec4d(1, 0, 0, 1)}, Size,
                              Size);
    EXPECT_TRUE(line.isEmpty());
}
// The middle of the picture lies between corners of depths w = 1 and w = 3: 1 / w is 2 / 3 there,
// and the near corners have three quarters of the weight.
TEST(TriangleRaster, WeightsFollowThePerspective)
{
    TriangleRaster const raster({Vec4d(-1, -1, 0, 1), Vec4d(1, -1, 0, 1), Vec4d(0, 3, 0, 3)}, 3, 3);
    TriangleRaster::Sample const middle = raster.at(1, 1);
    EXPECT_TRUE(middle.inside);
    EXPECT_NEAR(middle.weights[2], 0.25, 1e-12);
}
TEST(TriangleRaster, WhatLiesBehindTheEyeIsNotCovered)
{
    TriangleRaster const behind({Vec4d(-1, -1, 0, -1), Vec4d(1, -1, 0, -1), Vec4d(0, 1, 0, -1)},
                                Size, Size);
    for(Int32 i = 0; i < 16; ++i)
        EXPECT_FALSE(behind.at(i % 4, i / 4).inside);
}
// The floor below the eye reaches from behind it to the horizon in the middle of the picture.
TEST(TriangleRaster, ATriangleThroughTheEyesPlaneCoversItsPartBeforeIt)
{
    TriangleRaster const floor(
        {Vec4d(-90, -1, 0, -20), Vec4d(90, -1, 0, -20), Vec4d(0, -1, 0, 900)}, Size, Size);
    EXPECT_TRUE(floor.at(1, 3).inside);
    EXPECT_TRUE(floor.at(1, 2).inside);
    EXPECT_FALSE(floor.at(1, 1).inside);
}
TEST(TriangleRaster, DepthGoesFromNearToFar)
{
    TriangleRaster const tilted({Vec4d(-1, -1, -1, 1), Vec4d(3, -1, -1, 1), Vec4d(-1, 3, 1, 1)},
                                Size, Size);
    EXPECT_NEAR(tilted.at(0, 3).depth, 0.5 / 8, 1e-12);
    EXPECT_NEAR(tilted.at(0, 0).depth, 3.5 / 8, 1e-12);
}
} // namespace
} // namespace OSG::Test
