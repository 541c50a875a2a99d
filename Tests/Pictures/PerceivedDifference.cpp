#include "PerceivedDifference.h"

#include <algorithm>
#include <cmath>
#include <ostream>

namespace OSG::Test
{
namespace
{
// What a screen makes of a byte: the curve of sRGB.
Real64 light_of(Real64 byte)
{
    Real64 const value = byte / 255;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

// The mean over the pixel and its neighbours.
Vec3d mean_color(Pixels const &pixels, UInt32 x, UInt32 y)
{
    Vec3d sum;
    Real64 count = 0;
    for(UInt32 row = y == 0 ? 0 : y - 1; row <= std::min(y + 1, pixels.height - 1); ++row)
    {
        for(UInt32 column = x == 0 ? 0 : x - 1; column <= std::min(x + 1, pixels.width - 1);
            ++column)
        {
            UInt8 const *const pixel = pixels.at(column, row);
            sum += Vec3d(pixel[0], pixel[1], pixel[2]);
            ++count;
        }
    }
    return sum / count;
}

Real64 lab_curve(Real64 t)
{
    constexpr Real64 Bend = 6.0 / 29;
    return t > Bend * Bend * Bend ? std::cbrt(t) : t / (3 * Bend * Bend) + 4.0 / 29;
}

// By way of CIE XYZ, with white as screens have it (D65).
Vec3d lab_of(Vec3d const &color)
{
    Vec3d const light(light_of(color[0]), light_of(color[1]), light_of(color[2]));
    Real64 const x = lab_curve(light.dot(Vec3d(0.4124, 0.3576, 0.1805)) / 0.9505);
    Real64 const y = lab_curve(light.dot(Vec3d(0.2126, 0.7152, 0.0722)));
    Real64 const z = lab_curve(light.dot(Vec3d(0.0193, 0.1192, 0.9505)) / 1.0890);
    return Vec3d(116 * y - 16, 500 * (x - y), 200 * (y - z));
}
} // namespace

PerceivedDifference perceived_difference(Pixels const &a, Pixels const &b)
{
    if(a.width != b.width || a.height != b.height)
        return {100, 1};
    PerceivedDifference result;
    for(UInt32 y = 0; y < a.height; ++y)
    {
        for(UInt32 x = 0; x < a.width; ++x)
        {
            Real64 const apart =
                (lab_of(mean_color(a, x, y)) - lab_of(mean_color(b, x, y))).length();
            result.mean += apart;
            result.noticed += apart > PerceivedDifference::Glance ? 1 : 0;
        }
    }
    Real64 const count = Real64(a.width) * a.height;
    result.mean /= count;
    result.noticed /= count;
    return result;
}

void PrintTo(PerceivedDifference const &difference, std::ostream *out)
{
    *out << "a mean difference of " << difference.mean << ", seen at a glance in "
         << difference.noticed * 100 << " % of the pixels";
}
} // namespace OSG::Test
