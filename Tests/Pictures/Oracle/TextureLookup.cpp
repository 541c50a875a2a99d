#include "TextureLookup.h"

#include <algorithm>
#include <cmath>

#include "OSGGLNames.h"

namespace OSG::Test
{
namespace
{
constexpr Int32 Border = -1;

// A place this near to the border of two texels, in texels, may fall to either.
constexpr Real64 TexelDoubt = 0.05;

Int32 wrapped(Int32 texel, Int32 size, UInt32 wrap)
{
    auto const cycle = [](Int32 i, Int32 n) { return ((i % n) + n) % n; };
    switch(wrap)
    {
    case GLName::ClampToEdge:
        return std::clamp(texel, 0, size - 1);
    case GLName::Clamp:
        return texel < 0 || texel >= size ? Border : texel;
    case GLName::MirroredRepeat:
    {
        Int32 const place = cycle(texel, 2 * size);
        return place < size ? place : 2 * size - 1 - place;
    }
    default:
        return cycle(texel, size);
    }
}

Vec4d texel(TextureLevel const &level, Int32 x, Int32 y)
{
    if(x == Border || y == Border)
        return Vec4d(0.0, 0.0, 0.0, level.channels % 2 != 0 ? 1.0 : 0.0);
    return level.texels[std::size_t(y) * std::size_t(level.width) + std::size_t(x)];
}

// OpenGL's old clamping keeps the coordinate within the picture, not within its outer texels.
Real64 limited(Real64 coordinate, UInt32 wrap)
{
    return wrap == GLName::Clamp ? std::clamp(coordinate, 0.0, 1.0) : coordinate;
}

TextureColor nearest_texel(TexturePicture const &picture, TextureLevel const &level,
                           Vec2d const &place)
{
    auto const near = [](Real64 x) { return std::abs(x - std::round(x)) < TexelDoubt; };
    Int32 const x = static_cast<Int32>(std::floor(place[0]));
    Int32 const y = static_cast<Int32>(std::floor(place[1]));
    return {texel(level, wrapped(x, level.width, picture.wrapS),
                  wrapped(y, level.height, picture.wrapT)),
            near(place[0]) || near(place[1])};
}

TextureColor mixed_texels(TexturePicture const &picture, TextureLevel const &level,
                          Vec2d const &place)
{
    Real64 const left = std::floor(place[0] - 0.5);
    Real64 const low = std::floor(place[1] - 0.5);
    Vec4d sum;
    for(Int32 corner = 0; corner < 4; ++corner)
    {
        Int32 const dx = corner % 2;
        Int32 const dy = corner / 2;
        Real64 const shareX = 1 - std::abs(place[0] - 0.5 - (left + dx));
        Real64 const shareY = 1 - std::abs(place[1] - 0.5 - (low + dy));
        Int32 const x = wrapped(static_cast<Int32>(left) + dx, level.width, picture.wrapS);
        Int32 const y = wrapped(static_cast<Int32>(low) + dy, level.height, picture.wrapT);
        sum += texel(level, x, y) * (shareX * shareY);
    }
    return {sum};
}

TextureColor filtered(TexturePicture const &picture, TextureLevel const &level, Vec2d const &at,
                      bool linear)
{
    Vec2d const place(limited(at[0], picture.wrapS) * level.width,
                      limited(at[1], picture.wrapT) * level.height);
    return linear ? mixed_texels(picture, level, place) : nearest_texel(picture, level, place);
}

// --- filters with mipmaps, as OpenGL numbers them: the first word is for texels, the second one
// for levels ---
constexpr UInt32 LinearMipmapNearest = 0x2701;

bool has_mipmaps(UInt32 filter) { return filter >= GLName::NearestMipmapNearest; }
bool mixes_texels(UInt32 filter)
{
    return filter == GLName::Linear || filter == LinearMipmapNearest ||
           filter == GLName::LinearMipmapLinear;
}
bool mixes_levels(UInt32 filter) { return filter > LinearMipmapNearest; }

Vec4d mipmapped(TexturePicture const &picture, std::vector<TextureLevel> const &levels,
                Vec2d const &at, Real64 step)
{
    Real64 const last = static_cast<Real64>(levels.size() - 1);
    Real64 const wanted = std::clamp(std::log2(step), 0.0, last);
    Real64 const lower = mixes_levels(picture.minFilter) ? std::floor(wanted) : std::round(wanted);
    bool const linear = mixes_texels(picture.minFilter);
    Vec4d const below = filtered(picture, levels[std::size_t(lower)], at, linear).color;
    if(wanted <= lower)
        return below;
    Vec4d const above = filtered(picture, levels[std::size_t(lower) + 1], at, linear).color;
    return below + (above - below) * (wanted - lower);
}

TextureLevel level_of(Image const &image)
{
    UInt32 const channels = image.getChannels();
    TextureLevel level{
        static_cast<Int32>(image.getWidth()), static_cast<Int32>(image.getHeight()), channels, {}};
    auto const &bytes = *image.getMFPixel();
    for(UInt32 first = 0; first < bytes.size(); first += channels)
    {
        auto const value = [&](UInt32 i) { return bytes[first + i] / 255.0; };
        if(channels < 3)
            level.texels.emplace_back(value(0), value(0), value(0), channels == 2 ? value(1) : 1.0);
        else
            level.texels.emplace_back(value(0), value(1), value(2), channels == 4 ? value(3) : 1.0);
    }
    return level;
}

TextureLevel half_of(TextureLevel const &level)
{
    TextureLevel half{
        std::max(level.width / 2, 1), std::max(level.height / 2, 1), level.channels, {}};
    for(Int32 y = 0; y < half.height; ++y)
    {
        for(Int32 x = 0; x < half.width; ++x)
        {
            Vec4d sum;
            for(Int32 corner = 0; corner < 4; ++corner)
                sum += texel(level, std::min(2 * x + corner % 2, level.width - 1),
                             std::min(2 * y + corner / 2, level.height - 1));
            half.texels.push_back(sum / 4.0);
        }
    }
    return half;
}

Vec4d with_alpha(Vec3d const &color, Real64 alpha)
{
    return Vec4d(color[0], color[1], color[2], alpha);
}
} // namespace

std::vector<TextureLevel> texture_levels(Image const &image)
{
    std::vector<TextureLevel> levels{level_of(image)};
    while(levels.back().width > 1 || levels.back().height > 1)
        levels.push_back(half_of(levels.back()));
    return levels;
}

TextureColor texture_color(TexturePicture const &picture, std::vector<TextureLevel> const &levels,
                           Vec2d const &at, Real64 step)
{
    // Within these bounds drivers may decide either way whether a texel is smaller than a pixel.
    constexpr Real64 Smaller = 0.6;
    constexpr Real64 Larger = 1.7;
    bool const oneFilter = picture.minFilter == picture.magFilter;
    if(oneFilter || step < 1)
    {
        TextureColor result =
            filtered(picture, levels.front(), at, picture.magFilter == GLName::Linear);
        result.doubtful = result.doubtful || (!oneFilter && step > Smaller);
        return result;
    }
    if(has_mipmaps(picture.minFilter))
        return {mipmapped(picture, levels, at, step), true};
    TextureColor result = filtered(picture, levels.front(), at, mixes_texels(picture.minFilter));
    result.doubtful = result.doubtful || step < Larger;
    return result;
}

// The table of texture functions of OpenGL 2.1, with a colour of the environment of zero.
Vec4d environment_color(UInt32 mode, UInt32 channels, Vec4d const &below, Vec4d const &texture)
{
    Vec3d const c = direction_of(below);
    Vec3d const t = direction_of(texture);
    Real64 const alpha = channels % 2 == 0 ? below[3] * texture[3] : below[3];
    Vec3d const modulated(c[0] * t[0], c[1] * t[1], c[2] * t[2]);
    switch(mode)
    {
    case GLName::Replace:
        return with_alpha(t, channels % 2 == 0 ? texture[3] : below[3]);
    case GLName::Decal:
        return with_alpha(c * (1 - texture[3]) + t * texture[3], below[3]);
    case GLName::Blend:
        return with_alpha(c - modulated, alpha);
    case GLName::Add:
    {
        Vec3d const sum = c + t;
        return with_alpha(
            Vec3d(std::min(sum[0], 1.0), std::min(sum[1], 1.0), std::min(sum[2], 1.0)), alpha);
    }
    default:
        return with_alpha(modulated, alpha);
    }
}
} // namespace OSG::Test
