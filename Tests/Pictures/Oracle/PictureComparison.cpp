#include "PictureComparison.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ostream>

namespace OSG::Test
{
namespace
{
int byte_of(Real64 value) { return static_cast<int>(std::lround(value * 255)); }

int difference(SlowPixel const &expected, UInt8 const *pixel)
{
    int result = 0;
    for(int i = 0; i < 3; ++i)
        result = std::max(result, std::abs(byte_of(expected.color[i]) - pixel[i]));
    return result;
}
} // namespace

PictureComparison compare(SlowPicture const &expected, Pixels const &pixels)
{
    PictureComparison result;
    if(pixels.width != expected.width || pixels.height != expected.height)
    {
        result.compared = result.wrong = expected.width * expected.height;
        return result;
    }
    for(UInt32 y = 0; y < expected.height; ++y)
    {
        for(UInt32 x = 0; x < expected.width; ++x)
        {
            if(!expected.isAwayFromEdges(x, y))
                continue;
            int const apart = difference(expected.at(x, y), pixels.at(x, y));
            ++result.compared;
            result.covered += expected.at(x, y).isCovered() ? 1 : 0;
            result.wrong += apart > ColorTolerance ? 1 : 0;
            if(apart <= result.largest)
                continue;
            result.largest = apart;
            result.worstX = x;
            result.worstY = y;
        }
    }
    return result;
}

Pixels pixels_of(SlowPicture const &picture)
{
    Pixels result{picture.width, picture.height, {}};
    for(SlowPixel const &pixel : picture.pixels)
    {
        for(int i = 0; i < 3; ++i)
            result.rgb.push_back(static_cast<UInt8>(byte_of(pixel.color[i])));
    }
    return result;
}

void PrintTo(PictureComparison const &comparison, std::ostream *out)
{
    *out << comparison.wrong << " of " << comparison.compared << " pixels differ ("
         << comparison.covered << " of them show a triangle), most by " << comparison.largest
         << " at " << comparison.worstX << ", " << comparison.worstY;
}
} // namespace OSG::Test
