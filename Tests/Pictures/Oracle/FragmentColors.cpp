#include "FragmentColors.h"

#include <algorithm>
#include <cmath>

namespace OSG::Test
{
namespace
{
// Alpha this near to a half may be dropped or not.
constexpr Real64 AlphaDoubt = 0.02;

template <class Value>
Vec4d mixed(DrawnTriangle const &triangle, Vec3d const &weights, Value value)
{
    return value(triangle.vertices[0]) * weights[0] + value(triangle.vertices[1]) * weights[1] +
           value(triangle.vertices[2]) * weights[2];
}

// How far `b` is from `a`, in texels.
Real64 texels_between(TextureLevel const &level, Vec2d const &a, Vec2d const &b)
{
    return std::hypot((b[0] - a[0]) * level.width, (b[1] - a[1]) * level.height);
}

Vec2d coordinates(DrawnTriangle const &triangle, Vec3d const &weights, std::size_t unit)
{
    Vec4d const coords =
        mixed(triangle, weights, [unit](DrawnVertex const &v) { return v.texCoords[unit]; });
    return Vec2d(coords[0] / coords[3], coords[1] / coords[3]);
}

// --- factors of blending, as OpenGL numbers them ---
Vec4d factor(UInt32 name, Vec4d const &color, Vec4d const &there)
{
    Vec4d const one(1.0, 1.0, 1.0, 1.0);
    switch(name)
    {
    case 0:
        return Vec4d();
    case 0x300:
        return color;
    case 0x301:
        return one - color;
    case 0x302:
        return one * color[3];
    case 0x303:
        return one * (1 - color[3]);
    case 0x306:
        return there;
    case 0x307:
        return one - there;
    default:
        return one;
    }
}
} // namespace

StageLevels stage_levels(Surface const &surface)
{
    StageLevels levels;
    for(TextureStage const &stage : surface.stages)
        levels.push_back(texture_levels(*stage.picture.image));
    return levels;
}

Fragment fragment_of(Surface const &surface, StageLevels const &levels,
                     DrawnTriangle const &triangle, TriangleRaster const &raster,
                     TriangleRaster::Sample const &sample, Int32 x, Int32 y)
{
    Fragment result;
    result.color = mixed(triangle, sample.weights, [](DrawnVertex const &v) { return v.color; });
    for(std::size_t i = 0; i < std::min(surface.stages.size(), MaxStages); ++i)
    {
        TextureStage const &stage = surface.stages[i];
        Vec2d const at = coordinates(triangle, sample.weights, i);
        TextureLevel const &level = levels[i].front();
        Real64 const step = std::max(
            texels_between(level, at, coordinates(triangle, raster.at(x + 1, y).weights, i)),
            texels_between(level, at, coordinates(triangle, raster.at(x, y + 1).weights, i)));
        TextureColor const texture = texture_color(stage.picture, levels[i], at, step);
        result.doubtful = result.doubtful || texture.doubtful;
        result.color = environment_color(stage.environment, stage.picture.image->getChannels(),
                                         result.color, texture.color);
    }
    if(surface.alphaTest && std::abs(result.color[3] - 0.5) < AlphaDoubt)
        result.doubtful = true;
    return result;
}

Vec4d blended(Blending const &blending, Vec4d const &color, Vec4d const &there)
{
    Vec4d const own = factor(blending.source, color, there);
    Vec4d const other = factor(blending.destination, color, there);
    Vec4d sum(0.0, 0.0, 0.0, 1.0);
    for(int i = 0; i < 3; ++i)
        sum[i] = color[i] * own[i] + there[i] * other[i];
    return sum;
}
} // namespace OSG::Test
