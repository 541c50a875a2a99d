#pragma once

/// \file
/// The colour of a triangle at a pixel, and how it meets what is there.

#include "ItemVertices.h"
#include "Surface.h"
#include "TextureLookup.h"
#include "TriangleRaster.h"

namespace OSG::Test
{
struct Fragment
{
    Vec4d color;
    bool doubtful = false; ///< a texture may be read in another way, or alpha is about a half
};

/// The levels of the pictures of a surface, by unit.
using StageLevels = std::vector<std::vector<TextureLevel>>;
StageLevels stage_levels(Surface const &surface);

/// The triangle's colour at the pixel of `sample`, textures included.
Fragment fragment_of(Surface const &surface, StageLevels const &levels,
                     DrawnTriangle const &triangle, TriangleRaster const &raster,
                     TriangleRaster::Sample const &sample, Int32 x, Int32 y);

/// `color` drawn over `there`. The picture has no alpha of its own: its alpha is 1.
Vec4d blended(Blending const &blending, Vec4d const &color, Vec4d const &there);
} // namespace OSG::Test
