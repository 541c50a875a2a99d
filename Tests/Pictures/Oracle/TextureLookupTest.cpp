#include <cmath>

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "OSGGLNames.h"
#include "TextureLookup.h"

namespace OSG::Test
{
namespace
{
constexpr Real64 Magnified = 0.01; // texels a pixel

// Grey pictures of two texels beside one another: 0 and 1.
struct LookupCase
{
    char const *name;
    UInt32 filter;
    UInt32 wrap;
    Real64 s;
    Real64 expected;
};
LookupCase const LookupCases[] = {
    {"nearest takes the left texel", GLName::Nearest, GLName::Repeat, 0.3, 0},
    {"nearest takes the right texel", GLName::Nearest, GLName::Repeat, 0.7, 1},
    {"nearest repeats to the right", GLName::Nearest, GLName::Repeat, 1.3, 0},
    {"nearest repeats to the left", GLName::Nearest, GLName::Repeat, -0.3, 1},
    {"nearest keeps to the edge", GLName::Nearest, GLName::ClampToEdge, 3.3, 1},
    {"nearest is mirrored", GLName::Nearest, GLName::MirroredRepeat, 1.3, 1},
    {"linear at a texel's centre", GLName::Linear, GLName::Repeat, 0.75, 1},
    {"linear between texels", GLName::Linear, GLName::Repeat, 0.5, 0.5},
    {"linear nearer to one", GLName::Linear, GLName::Repeat, 0.375, 0.25},
    {"linear over the seam", GLName::Linear, GLName::Repeat, 1.0, 0.5},
    {"linear keeps to the edge", GLName::Linear, GLName::ClampToEdge, 1.0, 1},
    {"linear meets the border", GLName::Linear, GLName::Clamp, 7.0, 0.5},
};

UnrecordedRefPtr<Image> two_texels()
{
    UnrecordedRefPtr<Image> image(Image::create());
    UInt8 const grey[] = {0, 255};
    image->set(2, 1, 1, grey);
    return image;
}

TEST(TextureLookup, FiltersAndWrapsAreThoseOfOpenGL)
{
    UnrecordedRefPtr<Image> const image = two_texels();
    for(LookupCase const &row : LookupCases)
    {
        TexturePicture const picture{image, row.filter, row.filter, row.wrap, row.wrap, false};
        TextureColor const found =
            texture_color(picture, texture_levels(*image), Vec2d(row.s, 0.5), Magnified);
        EXPECT_NEAR(found.color[0], row.expected, 1e-12) << row.name;
        EXPECT_NEAR(found.color[3], 1, 1e-12) << row.name;
        EXPECT_FALSE(found.doubtful) << row.name;
    }
}
TEST(TextureLookup, TheFirstRowIsAtTheBottom)
{
    UnrecordedRefPtr<Image> const image(Image::create());
    UInt8 const pixels[] = {255, 0, 0, 0, 0, 255};
    image->set(1, 2, 3, pixels);
    TexturePicture const picture{image,          GLName::Nearest, GLName::Nearest,
                                 GLName::Repeat, GLName::Repeat,  false};
    EXPECT_EQ(texture_color(picture, texture_levels(*image), Vec2d(0.5, 0.25), Magnified).color,
              Vec4d(1, 0, 0, 1));
    EXPECT_EQ(texture_color(picture, texture_levels(*image), Vec2d(0.5, 0.75), Magnified).color,
              Vec4d(0, 0, 1, 1));
}
TEST(TextureLookup, BordersOfTexelsAndMipmapsAreDoubtful)
{
    UnrecordedRefPtr<Image> const image = two_texels();
    TexturePicture const nearest{image,          GLName::Nearest, GLName::Nearest,
                                 GLName::Repeat, GLName::Repeat,  false};
    EXPECT_TRUE(
        texture_color(nearest, texture_levels(*image), Vec2d(0.51, 0.5), Magnified).doubtful);
    TexturePicture const mipmapped{
        image, GLName::LinearMipmapLinear, GLName::Linear, GLName::Repeat, GLName::Repeat, false};
    EXPECT_TRUE(texture_color(mipmapped, texture_levels(*image), Vec2d(0.3, 0.5), 2).doubtful);
    EXPECT_FALSE(
        texture_color(mipmapped, texture_levels(*image), Vec2d(0.3, 0.5), Magnified).doubtful);
}

TEST(TextureLookup, MipmapsAreMeansOfFourTexels)
{
    UnrecordedRefPtr<Image> const image(Image::create());
    UInt8 const grey[] = {0, 255, 255, 255, 51, 51, 51, 51};
    image->set(4, 2, 1, grey);
    std::vector<TextureLevel> const levels = texture_levels(*image);
    ASSERT_EQ(levels.size(), 3u);
    EXPECT_EQ(levels[1].width, 2);
    EXPECT_EQ(levels[1].height, 1);
    EXPECT_NEAR(levels[1].texels[0][0], 0.35, 1e-12);
    EXPECT_NEAR(levels[1].texels[1][0], 0.6, 1e-12);
    EXPECT_NEAR(levels[2].texels[0][0], 0.475, 1e-12);
    TexturePicture const picture{
        image, GLName::LinearMipmapLinear, GLName::Linear, GLName::Repeat, GLName::Repeat, false};
    EXPECT_NEAR(texture_color(picture, levels, Vec2d(0.25, 0.5), 2).color[0], 0.35, 1e-12);
    EXPECT_NEAR(texture_color(picture, levels, Vec2d(0.25, 0.5), std::sqrt(8.0)).color[0],
                (0.35 + 0.475) / 2, 1e-12);
    EXPECT_NEAR(texture_color(picture, levels, Vec2d(0.25, 0.5), 100).color[0], 0.475, 1e-12);
}

struct EnvironmentCase
{
    char const *name;
    UInt32 mode;
    UInt32 channels;
    Vec4d expected;
};
// Below is (0.5, 0.5, 1, 0.5), the texture (0.5, 1, 0, 0.5).
EnvironmentCase const EnvironmentCases[] = {
    {"modulate, colour", 0x2100, 3, {0.25, 0.5, 0, 0.5}},
    {"modulate, alpha", 0x2100, 4, {0.25, 0.5, 0, 0.25}},
    {"replace, colour", 0x1E01, 3, {0.5, 1, 0, 0.5}},
    {"replace, grey and alpha", 0x1E01, 2, {0.5, 1, 0, 0.5}},
    {"decal", 0x2101, 4, {0.5, 0.75, 0.5, 0.5}},
    {"blend", 0x0BE2, 3, {0.25, 0, 1, 0.5}},
    {"add", 0x0104, 3, {1, 1, 1, 0.5}},
};

TEST(TextureLookup, EnvironmentsAreThoseOfOpenGL)
{
    for(EnvironmentCase const &row : EnvironmentCases)
    {
        Vec4d const color =
            environment_color(row.mode, row.channels, {0.5, 0.5, 1, 0.5}, {0.5, 1, 0, 0.5});
        for(int i = 0; i < 4; ++i)
            EXPECT_NEAR(color[i], row.expected[i], 1e-12) << row.name;
    }
}
} // namespace
} // namespace OSG::Test
