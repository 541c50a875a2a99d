#pragma once

#include <vector>

#include "OSGBaseTypes.h"
#include "OSGStateApi.h"

namespace OSG
{
/// Rows of 8-bit pixels without padding.
struct PixelRows
{
    UInt32 width = 0;
    UInt32 height = 0;
    UInt32 channels = 0;
    std::vector<UInt8> pixels;
};

/// A picture of half the width and half the height, rounded down and at least 1. Each of its pixels
/// is the mean of the area that it covers, rounded to the nearest.
OSG_STATE_API PixelRows half_picture(UInt32 width, UInt32 height, UInt32 channels,
                                     UInt8 const *pixels);
} // namespace OSG
