#include "OSGMipmaps.h"

#include <algorithm>
#include <cassert>

namespace OSG
{
namespace
{
// The pixels of a row or column that one of half as many covers, and what share of each. Shares are
// integers; they sum up to the number of pixels there were.
struct Cover
{
    UInt32 first;
    UInt32 count; // 1 to 3
    UInt64 share[3];
};

// With n pixels before and h after, the new pixel i covers the old ones from i * n / h to
// (i + 1) * n / h. In units of 1 / h an old pixel is h long.
std::vector<Cover> covers_of(UInt32 before, UInt32 after)
{
    std::vector<Cover> covers(after);
    for(UInt32 i = 0; i < after; ++i)
    {
        UInt64 const begin = UInt64(i) * before;
        UInt64 const end = begin + before;
        Cover &cover = covers[i];
        cover.first = static_cast<UInt32>(begin / after);
        cover.count = 0;
        for(UInt64 pixel = cover.first; pixel * after < end; ++pixel)
            cover.share[cover.count++] =
                std::min(end, (pixel + 1) * after) - std::max(begin, pixel * after);
    }
    return covers;
}
} // namespace

PixelRows half_picture(UInt32 width, UInt32 height, UInt32 channels, UInt8 const *pixels)
{
    assert(width > 0 && height > 0);
    PixelRows half{std::max(width / 2, 1u), std::max(height / 2, 1u), channels, {}};
    half.pixels.resize(std::size_t(half.width) * half.height * channels);
    std::vector<Cover> const columns = covers_of(width, half.width);
    std::vector<Cover> const rows = covers_of(height, half.height);
    UInt64 const whole = UInt64(width) * height;
    UInt8 *out = half.pixels.data();
    for(Cover const &row : rows)
    {
        for(Cover const &column : columns)
        {
            for(UInt32 channel = 0; channel < channels; ++channel)
            {
                UInt64 sum = 0;
                for(UInt32 y = 0; y < row.count; ++y)
                {
                    for(UInt32 x = 0; x < column.count; ++x)
                    {
                        std::size_t const at =
                            (std::size_t(row.first + y) * width + column.first + x) * channels;
                        sum += pixels[at + channel] * row.share[y] * column.share[x];
                    }
                }
                *out++ = static_cast<UInt8>((sum + whole / 2) / whole);
            }
        }
    }
    return half;
}
} // namespace OSG
