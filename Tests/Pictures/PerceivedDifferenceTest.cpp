#include "PerceivedDifference.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "PictureScenes.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
Pixels plain(Color3f const &color)
{
    Pixels pixels{20, 10, {}};
    for(int i = 0; i < 200 * 3; ++i)
        pixels.rgb.push_back(static_cast<UInt8>(color[i % 3] * 255));
    return pixels;
}

Pixels squares(Color3f const &left, Color3f const &right, Vec3f const &normal, Real32 shift)
{
    NodePtr const first = make_node(square(0.35f, 0, simple_material(left), normal));
    NodePtr const second = make_node(square(0.35f, 0, simple_material(right), normal));
    NodePtr const root = make_group({make_transform(translation(-0.5f + shift, 0, 0), {first}),
                                     make_transform(translation(0.5f + shift, 0, 0), {second})});
    return pixels_of(slow_picture(root, view_of(square_view())));
}

constexpr Color3f Red(0.8f, 0.1f, 0.1f);
constexpr Color3f Blue(0.1f, 0.1f, 0.8f);
Vec3f const Askew(0.6f, 0, 0.8f);

PerceivedDifference from_squares(Pixels const &other)
{
    return perceived_difference(squares(Red, Blue, Askew, 0), other);
}

TEST(PerceivedDifference, DistancesAreThoseOfLab)
{
    // Black and white are 100 apart; the other values are from tables of sRGB in Lab.
    EXPECT_NEAR(perceived_difference(plain({0, 0, 0}), plain({1, 1, 1})).mean, 100, 0.02);
    EXPECT_NEAR(perceived_difference(plain({1, 0, 0}), plain({0, 1, 0})).mean, 170.6, 0.1);
}
TEST(PerceivedDifference, APictureLooksLikeItself)
{
    PerceivedDifference const same = from_squares(squares(Red, Blue, Askew, 0));
    EXPECT_EQ(same.mean, 0);
    EXPECT_EQ(same.noticed, 0);
}
TEST(PerceivedDifference, AStepOfColourAndAnotherEdgePixelLookTheSame)
{
    Pixels pixels = squares(Red, Blue, Askew, 0);
    RandomNumbers random(5);
    for(UInt8 &byte : pixels.rgb)
        byte = static_cast<UInt8>(std::clamp(byte + static_cast<int>(random.below(3)) - 1, 0, 255));
    for(UInt32 y = 40; y < 60; ++y) // a tooth of one pixel in an edge
        std::copy_n(pixels.at(2, y), 3, pixels.at(8, y));
    EXPECT_TRUE(from_squares(pixels).looksTheSame()) << from_squares(pixels).mean;
}
TEST(PerceivedDifference, AShiftByTwoPixelsLooksDifferent)
{
    EXPECT_FALSE(from_squares(squares(Red, Blue, Askew, 0.04f)).looksTheSame());
}
TEST(PerceivedDifference, SwappedMaterialsLookDifferent)
{
    EXPECT_FALSE(from_squares(squares(Blue, Red, Askew, 0)).looksTheSame());
}
TEST(PerceivedDifference, ReversedNormalsLookDifferent)
{
    EXPECT_FALSE(from_squares(squares(Red, Blue, -Askew, 0)).looksTheSame());
}
TEST(PerceivedDifference, AnotherSizeLooksDifferent)
{
    Pixels pixels = squares(Red, Blue, Askew, 0);
    pixels.width = 50;
    pixels.height = 200;
    EXPECT_FALSE(from_squares(pixels).looksTheSame());
}
} // namespace
} // namespace OSG::Test
