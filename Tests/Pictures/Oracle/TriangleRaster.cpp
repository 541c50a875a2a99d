#include "TriangleRaster.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace OSG::Test
{
namespace
{
// Normalised x, y with w as pixels: (0, 0) is the picture's left top corner.
Vec3d in_pixels(Vec4d const &corner, UInt32 width, UInt32 height)
{
    return Vec3d((corner[0] + corner[3]) * width / 2, (corner[3] - corner[1]) * height / 2,
                 corner[3]);
}
} // namespace

TriangleRaster::TriangleRaster(std::array<Vec4d, 3> const &corners, UInt32 width, UInt32 height)
    : _corners(corners)
    , _width(width)
    , _height(height)
{
    Vec3d const a = in_pixels(corners[0], width, height);
    Vec3d const b = in_pixels(corners[1], width, height);
    Vec3d const c = in_pixels(corners[2], width, height);
    // Rows of the inverse of the matrix with the columns a, b, c. Rows of pixels go down, which
    // turns the triangle round.
    Real64 const determinant = a.dot(b.cross(c));
    _determinant = -determinant;
    if(determinant == 0)
        return;
    _edges = {b.cross(c) / determinant, c.cross(a) / determinant, a.cross(b) / determinant};
}

TriangleRaster::Range TriangleRaster::range() const
{
    Real64 low[2] = {Real64(_width), Real64(_height)};
    Real64 high[2] = {0, 0};
    for(Vec4d const &corner : _corners)
    {
        if(corner[3] <= 0)
            return {0, 0, _width, _height};
        Vec3d const pixel = in_pixels(corner, _width, _height) / corner[3];
        for(int i = 0; i < 2; ++i)
        {
            low[i] = std::min(low[i], pixel[i] - 1);
            high[i] = std::max(high[i], pixel[i] + 2);
        }
    }
    auto const limited = [](Real64 value, UInt32 size)
    { return static_cast<UInt32>(std::clamp(value, 0.0, Real64(size))); };
    return {limited(low[0], _width), limited(low[1], _height), limited(high[0], _width),
            limited(high[1], _height)};
}

TriangleRaster::Sample TriangleRaster::at(Int32 x, Int32 y) const
{
    Vec3d const centre(x + 0.5, y + 0.5, 1.0);
    Vec3d const shares(_edges[0].dot(centre), _edges[1].dot(centre), _edges[2].dot(centre));
    Real64 const sum = shares[0] + shares[1] + shares[2]; // 1 / w
    Sample sample;
    sample.inside = sum > 0 && shares[0] >= 0 && shares[1] >= 0 && shares[2] >= 0;
    sample.edgeDistance = std::numeric_limits<Real64>::max();
    for(int i = 0; i < 3; ++i)
    {
        Real64 const slope = std::hypot(_edges[i][0], _edges[i][1]);
        if(slope > 0)
            sample.edgeDistance = std::min(sample.edgeDistance, shares[i] / slope);
    }
    if(sum <= 0)
        return sample;
    sample.weights = shares / sum;
    Vec4d const point = _corners[0] * sample.weights[0] + _corners[1] * sample.weights[1] +
                        _corners[2] * sample.weights[2];
    sample.depth = (point[2] / point[3] + 1) / 2;
    return sample;
}
} // namespace OSG::Test
