#include "VertexColors.h"

#include <algorithm>
#include <cmath>

#include "OSGGLNames.h"

namespace OSG::Test
{
namespace
{
constexpr Real64 ModelAmbient = 0.2;

SurfaceColors with_own_color(SurfaceColors colors, Vec4d const &own)
{
    UInt32 const replaced = colors.colorMaterial;
    if(replaced == GLName::Ambient || replaced == GLName::AmbientAndDiffuse)
        colors.ambient = own;
    if(replaced == GLName::Diffuse || replaced == GLName::AmbientAndDiffuse)
        colors.diffuse = own;
    if(replaced == GLName::Specular)
        colors.specular = own;
    if(replaced == GLName::Emission)
        colors.emission = own;
    return colors;
}

Vec4d product(Vec4d const &a, Vec4d const &b)
{
    return Vec4d(a[0] * b[0], a[1] * b[1], a[2] * b[2], a[3] * b[3]);
}

Vec4d clamped(Vec4d color)
{
    for(int i = 0; i < 4; ++i)
        color[i] = std::clamp(color[i], 0.0, 1.0);
    return color;
}

// How much of a light arrives: by distance and by the cone.
Real64 arriving(LightSource const &light, Vec3d const &toLight, Real64 distance)
{
    if(light.position[3] == 0)
        return 1;
    Real64 const fading = light.attenuation[0] + light.attenuation[1] * distance +
                          light.attenuation[2] * distance * distance;
    if(!light.isSpot)
        return 1 / fading;
    Real64 const cosine = -toLight.dot(unit(light.spotDirection));
    if(cosine < light.spotCosine)
        return 0;
    return std::pow(std::max(cosine, 0.0), light.spotExponent) / fading;
}

// The viewer is infinitely far along +z.
Vec4d share_of(LightSource const &light, SurfaceColors const &colors, Pnt3d const &eye,
               Vec3d const &normal)
{
    Vec3d const place = direction_of(light.position);
    Vec3d const way = light.position[3] == 0 ? place : place - eye.subZero();
    Vec3d const toLight = unit(way);
    Vec4d sum = product(light.ambient, colors.ambient);
    Real64 const facing = normal.dot(toLight);
    if(facing > 0)
    {
        sum += product(light.diffuse, colors.diffuse) * facing;
        Vec3d const half = unit(toLight + Vec3d(0.0, 0.0, 1.0));
        Real64 const gloss = std::max(normal.dot(half), 0.0);
        sum += product(light.specular, colors.specular) * std::pow(gloss, colors.shininess);
    }
    return sum * arriving(light, toLight, way.length());
}
} // namespace

Vec4d vertex_color(SurfaceColors const &material, std::span<LightSource const> lights,
                   LitVertex const &vertex)
{
    SurfaceColors const colors =
        vertex.ownColor ? with_own_color(material, *vertex.ownColor) : material;
    if(!colors.lit || !vertex.normal)
        return clamped(colors.diffuse);
    Vec4d sum = colors.emission + colors.ambient * ModelAmbient;
    for(LightSource const &light : lights)
        sum += share_of(light, colors, vertex.eye, *vertex.normal);
    sum[3] = colors.diffuse[3];
    return clamped(sum);
}
} // namespace OSG::Test
