#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "OSGSimpleMaterial.h"
#include "VertexColors.h"

namespace OSG::Test
{
namespace
{
LightSource const Headlight[1];

SurfaceColors colors()
{
    SurfaceColors result;
    result.ambient = Vec4d(0.5, 0.0, 0.0, 1.0);
    result.diffuse = Vec4d(0.4, 0.2, 0.0, 0.75);
    result.specular = Vec4d(0.0, 0.0, 0.5, 1.0);
    result.emission = Vec4d(0.1, 0.1, 0.1, 1.0);
    result.shininess = 2;
    return result;
}

LitVertex facing(Real64 cosine)
{
    return {Pnt3d(0.0, 0.0, -3.0), Vec3d(0.0, std::sqrt(1 - cosine * cosine), cosine), {}};
}

void expect_near(Vec4d const &color, Vec4d const &expected)
{
    for(int i = 0; i < 4; ++i)
        EXPECT_NEAR(color[i], expected[i], 1e-6) << "component " << i;
}

TEST(VertexColors, AHeadlightAddsEmissionAmbientDiffuseAndSpecular)
{
    expect_near(vertex_color(colors(), Headlight, facing(1)), {0.6, 0.3, 0.6, 0.75});
    expect_near(vertex_color(colors(), Headlight, facing(0.5)), {0.4, 0.2, 0.225, 0.75});
}
TEST(VertexColors, WhatFacesAwayHasEmissionAndAmbient)
{
    expect_near(vertex_color(colors(), Headlight, facing(-0.5)), {0.2, 0.1, 0.1, 0.75});
}
TEST(VertexColors, AZeroNormalHasEmissionAndAmbient)
{
    LitVertex vertex = facing(1);
    vertex.normal = Vec3d();
    expect_near(vertex_color(colors(), Headlight, vertex), {0.2, 0.1, 0.1, 0.75});
}
TEST(VertexColors, WithoutANormalTheColourIsDiffuse)
{
    LitVertex vertex = facing(1);
    vertex.normal.reset();
    expect_near(vertex_color(colors(), Headlight, vertex), {0.4, 0.2, 0.0, 0.75});
}
TEST(VertexColors, ColoursAreClampedAtTheVertex)
{
    SurfaceColors bright = colors();
    bright.diffuse = Vec4d(3.0, -1.0, 0.0, 2.0);
    expect_near(vertex_color(bright, Headlight, facing(1)), {1, 0, 0.6, 1});
}

struct ColorMaterialCase
{
    UInt32 replaced;
    bool lit;
    Vec4d expected;
};
ColorMaterialCase const ColorMaterialCases[] = {
    {0, true, {0.6, 0.3, 0.6, 0.75}},      {0x1200, true, {0.52, 0.34, 0.64, 0.75}},
    {0x1201, true, {0.3, 0.3, 0.8, 1}},    {0x1202, true, {0.7, 0.5, 0.3, 0.75}},
    {0x1600, true, {0.6, 0.4, 0.7, 0.75}}, {0x1602, true, {0.12 + 0.1, 0.34, 0.84, 1}},
    {0x1201, false, {0.1, 0.2, 0.2, 1}},   {0x1200, false, {0.4, 0.2, 0, 0.75}},
    {0, false, {0.4, 0.2, 0, 0.75}},
};

TEST(VertexColors, ColoursOfVerticesReplaceWhatTheMaterialNames)
{
    for(ColorMaterialCase const &row : ColorMaterialCases)
    {
        SCOPED_TRACE(row.replaced);
        SurfaceColors material = colors();
        material.colorMaterial = row.replaced;
        material.lit = row.lit;
        LitVertex vertex = facing(1);
        vertex.ownColor = Vec4d(0.1, 0.2, 0.2, 1.0);
        expect_near(vertex_color(material, Headlight, vertex), row.expected);
    }
}

// A light one unit beside and one unit before the vertex, of which half arrives at that distance.
TEST(VertexColors, APointLightFadesWithItsDistance)
{
    LightSource light;
    light.position = Vec4d(1.0, 0.0, -2.0, 1.0);
    light.ambient = Vec4d(0.2, 0.2, 0.2, 1.0);
    light.specular = Vec4d();
    light.attenuation = Vec3d(0.0, 0.0, 1.0);
    Real64 const cosine = std::sqrt(0.5);
    expect_near(vertex_color(colors(), std::span(&light, 1), facing(1)),
                {0.2 + (0.1 + 0.4 * cosine) / 2, 0.1 + 0.2 * cosine / 2, 0.1, 0.75});
}
TEST(VertexColors, ASpotLightShinesWithinItsCone)
{
    LightSource light;
    light.position = Vec4d(0.0, 0.0, 0.0, 1.0);
    light.specular = Vec4d();
    light.isSpot = true;
    light.spotDirection = Vec3d(0.0, 0.6, -0.8);
    light.spotExponent = 1;
    light.spotCosine = 0.79;
    expect_near(vertex_color(colors(), std::span(&light, 1), facing(1)),
                {0.2 + 0.4 * 0.8, 0.1 + 0.2 * 0.8, 0.1, 0.75});
    light.spotCosine = 0.81;
    expect_near(vertex_color(colors(), std::span(&light, 1), facing(1)), {0.2, 0.1, 0.1, 0.75});
}
TEST(VertexColors, ShininessAndTransparencyAreLimitedForDrawing)
{
    UnrecordedRefPtr<SimpleMaterial> const material(SimpleMaterial::create());
    material->setShininess(500);
    material->setTransparency(-1);
    EXPECT_EQ(surface_of(chunks_of(material)).colors.shininess, 128);
    EXPECT_EQ(surface_of(chunks_of(material)).colors.diffuse[3], 1);
    EXPECT_FALSE(surface_of(chunks_of(material)).transparent);
    material->setShininess(std::numeric_limits<Real32>::quiet_NaN());
    material->setTransparency(2);
    EXPECT_EQ(surface_of(chunks_of(material)).colors.shininess, 0);
    EXPECT_EQ(surface_of(chunks_of(material)).colors.diffuse[3], 0);
}
} // namespace
} // namespace OSG::Test
