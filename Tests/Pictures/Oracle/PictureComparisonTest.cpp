#include <gtest/gtest.h>

#include "../PictureScenes.h"
#include "PictureComparison.h"

namespace OSG::Test
{
namespace
{
constexpr Color3f Red(1, 0, 0);
constexpr Color3f Green(0, 1, 0);

/// Two squares beside one another, lit askew.
struct Squares
{
    Color3f left = Red;
    Color3f right = Green;
    Vec3f normal{0.6f, 0, 0.8f};
    Real32 shift = 0;
};

SlowPicture picture_of(Squares const &squares)
{
    NodePtr const root = make_transform(
        translation(squares.shift, 0, 0),
        {make_transform(
             translation(-0.5f, 0, 0),
             {make_node(square(0.4f, 0, simple_material(squares.left), squares.normal))}),
         make_transform(
             translation(0.5f, 0, 0),
             {make_node(square(0.4f, 0, simple_material(squares.right), squares.normal))})});
    return slow_picture(root, view_of(square_view()));
}

PictureComparison comparison_with(Squares const &squares)
{
    return compare(picture_of({}), pixels_of(picture_of(squares)));
}

TEST(PictureComparison, APictureEqualsItself)
{
    PictureComparison const same = comparison_with({});
    EXPECT_TRUE(same.isEqual());
    EXPECT_EQ(same.largest, 0);
    EXPECT_GT(same.compared, 8000u);
    EXPECT_GT(same.covered, 2000u);
}
TEST(PictureComparison, APictureThatIsShiftedByAPixelDiffersAwayFromEdges)
{
    // The squares' edges lie on borders of pixels: a shift by a pixel changes the pixels at edges
    // alone, a shift by two changes others as well.
    EXPECT_TRUE(comparison_with({.shift = 0.02f}).isEqual());
    EXPECT_GT(comparison_with({.shift = 0.04f}).wrong, 100u);
}
TEST(PictureComparison, AnotherMaterialDiffers)
{
    PictureComparison const swapped = comparison_with({.left = Green, .right = Red});
    EXPECT_EQ(swapped.wrong, swapped.covered);
}
TEST(PictureComparison, ReversedNormalsDiffer)
{
    PictureComparison const reversed = comparison_with({.normal = {-0.6f, 0, -0.8f}});
    EXPECT_EQ(reversed.wrong, reversed.covered);
}
TEST(PictureComparison, AMissingSquareDiffers)
{
    PictureComparison const missing = comparison_with({.right = Color3f(1, 1, 1)});
    EXPECT_GT(missing.wrong, 1000u);
}
TEST(PictureComparison, ColoursMayDifferByTheToleranceAndNoMore)
{
    SlowPicture const expected = picture_of({});
    Pixels pixels = pixels_of(expected);
    *pixels.at(5, 5) = static_cast<UInt8>(255 - ColorTolerance);
    EXPECT_TRUE(compare(expected, pixels).isEqual());
    *pixels.at(5, 5) = static_cast<UInt8>(255 - ColorTolerance - 1);
    PictureComparison const result = compare(expected, pixels);
    EXPECT_EQ(result.wrong, 1u);
    EXPECT_EQ(result.largest, ColorTolerance + 1);
    EXPECT_EQ(result.worstX, 5u);
    EXPECT_EQ(result.worstY, 5u);
}
TEST(PictureComparison, APictureOfAnotherSizeDiffers)
{
    Pixels pixels = pixels_of(picture_of({}));
    pixels.width = 50;
    pixels.height = 200;
    EXPECT_FALSE(compare(picture_of({}), pixels).isEqual());
}
} // namespace
} // namespace OSG::Test
