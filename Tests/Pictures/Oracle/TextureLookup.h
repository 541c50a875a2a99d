#pragma once

/// \file
/// The colour of a texture at a place, and how it meets the colour below it.

#include "Surface.h"

namespace OSG::Test
{
/// A picture at one size.
struct TextureLevel
{
    Int32 width;
    Int32 height;
    UInt32 channels;
    std::vector<Vec4d> texels; ///< the bottom row first
};

/// The picture, then its mipmaps down to one texel, each the mean of four texels of the one before.
std::vector<TextureLevel> texture_levels(Image const &image);

struct TextureColor
{
    Vec4d color;
    bool doubtful = false; ///< another texel or another filter may be as right
};

/// The colour of the picture at texture coordinates `at`. `step` is how many texels they move by
/// one pixel of the screen, as the longer of the two ways. Drivers have some freedom in how they
/// choose and mix mipmaps: colours from them are doubtful.
TextureColor texture_color(TexturePicture const &picture, std::vector<TextureLevel> const &levels,
                           Vec2d const &at, Real64 step);

/// What the unit's environment makes of the colour below, for a picture of `channels` channels.
Vec4d environment_color(UInt32 mode, UInt32 channels, Vec4d const &below, Vec4d const &texture);
} // namespace OSG::Test
