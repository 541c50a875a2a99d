#pragma once

#include <algorithm>
#include <vector>

#include "OSGBaseTypes.h"

namespace OSG
{
/// Puts the rows of a picture in the reverse order. OpenGL has the bottom row first.
inline void flip_rows(std::vector<UInt8> &pixels, UInt32 height)
{
    if(height == 0)
        return;
    auto const row = static_cast<std::ptrdiff_t>(pixels.size() / height);
    for(std::ptrdiff_t y = 0; y < height / 2; ++y)
        std::swap_ranges(pixels.begin() + row * y, pixels.begin() + row * (y + 1),
                         pixels.end() - row * (y + 1));
}
} // namespace OSG
