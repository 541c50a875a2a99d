#pragma once

/// \file
/// The colour of a texture at a place, and how it meets the colour below it.

#include "Surface.h"

namespace OSG::Test
{
struct TextureColor
{
    Vec4d color;
    bool doubtful = false; ///< another texel or another filter may be as right
};

/// The colour of the picture at texture coordinates `at`. `step` is how far they move by one pixel
/// of the screen, as the longer of the two ways. Mipmaps are not followed: where one would serve,
/// the colour is doubtful.
TextureColor texture_color(TexturePicture const &picture, Vec2d const &at, Real64 step);

/// What the unit's environment makes of the colour below, for a picture of `channels` channels.
Vec4d environment_color(UInt32 mode, UInt32 channels, Vec4d const &below, Vec4d const &texture);
} // namespace OSG::Test
