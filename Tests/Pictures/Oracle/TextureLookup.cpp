#include "TextureLookup.h"

#include <algorithm>
#include <cmath>

#include "OSGGLNames.h"

namespace OSG::Test
{
namespace
{
constexpr UInt32 ClampToEdge = 0x812F;
constexpr UInt32 MirroredRepeat = 0x8370;
constexpr UInt32 Decal = 0x2101;
constexpr UInt32 Blend = 0x0BE2;
constexpr UInt32 Replace = 0x1E01;
constexpr UInt32 Add = 0x0104;

constexpr Int32 Border = -1;

// A place this near to the border of two texels, in texels, may fall to either.
constexpr Real64 TexelDoubt = 0.05;

Int32 wrapped(Int32 texel, Int32 size, UInt32 wrap)
{
    auto const cycle = [](Int32 i, Int32 n) { return ((i % n) + n) % n; };
    switch(wrap)
    {
    case ClampToEdge:
        return std::clamp(texel, 0, size - 1);
    case GLName::Clamp:
        return texel < 0 || texel >= size ? Border : texel;
    case MirroredRepeat:
    {
        Int32 const place = cycle(texel, 2 * size);
        return place < size ? place : 2 * size - 1 - place;
    }
    default:
        return cycle(texel, size);
    }
}

Vec4d texel(Image const &image, Int32 x, Int32 y)
{
    UInt32 const channels = image.getChannels();
    Vec4d const outside = Vec4d(0.0, 0.0, 0.0, channels % 2 != 0 ? 1.0 : 0.0);
    if(x == Border || y == Border)
        return outside;
    std::size_t const first = (std::size_t(y) * image.getWidth() + std::size_t(x)) * channels;
    auto const value = [&](UInt32 i) { return (*image.getMFPixel())[first + i] / 255.0; };
    if(channels < 3)
        return Vec4d(value(0), value(0), value(0), channels == 2 ? value(1) : 1.0);
    return Vec4d(value(0), value(1), value(2), channels == 4 ? value(3) : 1.0);
}

// OpenGL's old clamping keeps the coordinate within the picture, not within its outer texels.
Real64 limited(Real64 coordinate, UInt32 wrap)
{
    return wrap == GLName::Clamp ? std::clamp(coordinate, 0.0, 1.0) : coordinate;
}

TextureColor nearest_texel(TexturePicture const &picture, Vec2d const &place)
{
    Image const &image = *picture.image;
    Int32 const width = static_cast<Int32>(image.getWidth());
    Int32 const height = static_cast<Int32>(image.getHeight());
    auto const near = [](Real64 x) { return std::abs(x - std::round(x)) < TexelDoubt; };
    Int32 const x = static_cast<Int32>(std::floor(place[0]));
    Int32 const y = static_cast<Int32>(std::floor(place[1]));
    return {texel(image, wrapped(x, width, picture.wrapS), wrapped(y, height, picture.wrapT)),
            near(place[0]) || near(place[1])};
}

TextureColor blended_texels(TexturePicture const &picture, Vec2d const &place)
{
    Image const &image = *picture.image;
    Int32 const width = static_cast<Int32>(image.getWidth());
    Int32 const height = static_cast<Int32>(image.getHeight());
    Real64 const left = std::floor(place[0] - 0.5);
    Real64 const low = std::floor(place[1] - 0.5);
    Vec4d sum;
    for(Int32 corner = 0; corner < 4; ++corner)
    {
        Int32 const dx = corner % 2;
        Int32 const dy = corner / 2;
        Real64 const shareX = 1 - std::abs(place[0] - 0.5 - (left + dx));
        Real64 const shareY = 1 - std::abs(place[1] - 0.5 - (low + dy));
        Int32 const x = wrapped(static_cast<Int32>(left) + dx, width, picture.wrapS);
        Int32 const y = wrapped(static_cast<Int32>(low) + dy, height, picture.wrapT);
        sum += texel(image, x, y) * (shareX * shareY);
    }
    return {sum};
}

TextureColor filtered(TexturePicture const &picture, Vec2d const &place, bool linear)
{
    return linear ? blended_texels(picture, place) : nearest_texel(picture, place);
}

Vec4d with_alpha(Vec3d const &color, Real64 alpha)
{
    return Vec4d(color[0], color[1], color[2], alpha);
}
} // namespace

TextureColor texture_color(TexturePicture const &picture, Vec2d const &at, Real64 step)
{
    // Within these bounds drivers may decide either way whether a texel is smaller than a pixel.
    constexpr Real64 Smaller = 0.6;
    constexpr Real64 Larger = 1.7;
    Image const &image = *picture.image;
    Vec2d const place(limited(at[0], picture.wrapS) * image.getWidth(),
                      limited(at[1], picture.wrapT) * image.getHeight());
    Real64 const texels = step * std::max(image.getWidth(), image.getHeight());
    bool const mipmaps =
        picture.minFilter != GLName::Nearest && picture.minFilter != GLName::Linear;
    bool const oneFilter = picture.minFilter == picture.magFilter;
    if(oneFilter || texels < Smaller)
        return filtered(picture, place, picture.magFilter == GLName::Linear);
    TextureColor result = filtered(picture, place, picture.minFilter == GLName::Linear);
    result.doubtful = result.doubtful || mipmaps || texels < Larger;
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
    case Replace:
        return with_alpha(t, channels % 2 == 0 ? texture[3] : below[3]);
    case Decal:
        return with_alpha(c * (1 - texture[3]) + t * texture[3], below[3]);
    case Blend:
        return with_alpha(c - modulated, alpha);
    case Add:
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
