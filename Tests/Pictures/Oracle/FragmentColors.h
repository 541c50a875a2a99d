#pragma once

/// \file
/// The colour of a triangle at a pixel, and how it meets what is there.

#include "ItemVertices.h"
#include "Surface.h"
#include "TriangleRaster.h"

namespace OSG::Test
{
struct Fragment
{
    Vec4d color;
    bool doubtful = false; ///< a texture may be read in another way, or alpha is about a half
};

/// The triangle's colour at the pixel of `sample`, texture included.
Fragment fragment_of(Surface const &surface, DrawnTriangle const &triangle,
                     TriangleRaster const &raster, TriangleRaster::Sample const &sample, Int32 x,
                     Int32 y);

/// `color` drawn over `there`. The picture has no alpha of its own: its alpha is 1.
Vec4d blended(Blending const &blending, Vec4d const &color, Vec4d const &there);
} // namespace OSG::Test
