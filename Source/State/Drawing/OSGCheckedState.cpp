#include "OSGCheckedState.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>

#include "OSGFinite.h"

namespace OSG
{
namespace
{
bool is_one_of(UInt32 value, std::initializer_list<UInt32> known)
{
    return std::find(known.begin(), known.end(), value) != known.end();
}

Real32 clamped(Real32 value, Real32 lowest, Real32 highest)
{
    return std::isnan(value) ? 0.f : std::clamp(value, lowest, highest);
}

constexpr Real32 Largest = std::numeric_limits<Real32>::max();

Color4f finite(Color4f const &color)
{
    auto const at = [&color](UInt32 i) { return clamped(color[i], -Largest, Largest); };
    return Color4f(at(0), at(1), at(2), at(3));
}

template <UInt32 Count>
Vector<Real32, Count> finite(Vector<Real32, Count> vector, Real32 lowest = -Largest)
{
    for(UInt32 i = 0; i < Count; ++i)
        vector[i] = clamped(vector[i], lowest, Largest);
    return vector;
}

bool is_factor(UInt32 factor)
{
    return factor <= GLName::One ||
           (factor >= GLName::SourceColor && factor <= GLName::OneMinusDestColor) ||
           (factor >= GLName::ConstantColor && factor <= GLName::OneMinusConstantAlpha);
}

bool is_wrapping(UInt32 wrap)
{
    return is_one_of(wrap, {GLName::Clamp, GLName::Repeat, GLName::ClampToBorder,
                            GLName::ClampToEdge, GLName::MirroredRepeat});
}
} // namespace

SurfaceValues checked_surface(SurfaceValues surface)
{
    constexpr Real32 LargestShininess = 128;
    surface.ambient = finite(surface.ambient);
    surface.diffuse = finite(surface.diffuse);
    surface.specular = finite(surface.specular);
    surface.emission = finite(surface.emission);
    surface.shininess = clamped(surface.shininess, 0, LargestShininess);
    if(!is_one_of(surface.colorMaterial, {GLName::Ambient, GLName::Diffuse, GLName::Specular,
                                          GLName::Emission, GLName::AmbientAndDiffuse}))
        surface.colorMaterial = 0;
    return surface;
}

LightValues checked_light(LightValues light)
{
    constexpr Real32 NoCone = 180;
    constexpr Real32 WidestCone = 90;
    constexpr Real32 LargestExponent = 128;
    light.ambient = finite(light.ambient);
    light.diffuse = finite(light.diffuse);
    light.specular = finite(light.specular);
    light.position = finite(light.position);
    light.spotDirection = finite(light.spotDirection);
    light.attenuation = finite(light.attenuation, 0);
    light.spotExponent = clamped(light.spotExponent, 0, LargestExponent);
    light.spotCutOff =
        light.spotCutOff > WidestCone ? NoCone : clamped(light.spotCutOff, 0, WidestCone);
    return light;
}

Real32 checked_transparency(Real32 transparency) { return clamped(transparency, 0, 1); }

BlendValues checked_blend(BlendValues blend)
{
    if(!is_factor(blend.srcFactor) && blend.srcFactor != GLName::SourceAlphaSaturate)
        blend.srcFactor = BlendValues().srcFactor;
    if(!is_factor(blend.destFactor))
        blend.destFactor = BlendValues().destFactor;
    return blend;
}

TextureValues checked_texture(TextureValues texture)
{
    TextureValues const fresh;
    bool const isMinFilter = texture.minFilter == GLName::Nearest ||
                             texture.minFilter == GLName::Linear ||
                             (texture.minFilter >= GLName::NearestMipmapNearest &&
                              texture.minFilter <= GLName::LinearMipmapLinear);
    if(!isMinFilter)
        texture.minFilter = fresh.minFilter;
    if(texture.magFilter != GLName::Nearest && texture.magFilter != GLName::Linear)
        texture.magFilter = fresh.magFilter;
    if(!is_wrapping(texture.wrapS))
        texture.wrapS = fresh.wrapS;
    if(!is_wrapping(texture.wrapT))
        texture.wrapT = fresh.wrapT;
    return texture;
}

UInt32 checked_environment(UInt32 mode)
{
    return is_one_of(mode, {GLName::Add, GLName::Blend, GLName::Replace, GLName::Decal})
               ? mode
               : GLName::Modulate;
}

Matrix checked_transform(Matrix const &matrix) { return is_finite(matrix) ? matrix : Matrix(); }
} // namespace OSG
