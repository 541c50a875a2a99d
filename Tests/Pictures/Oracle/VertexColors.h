#pragma once

/// \file
/// The colour of a vertex by light and material.

#include <optional>
#include <span>

#include "Surface.h"

namespace OSG::Test
{
/// A light in eye space. Where w of the position is 0, the light is infinitely far in its
/// direction.
struct LightSource
{
    Vec4d position{0.0, 0.0, 1.0, 0.0};
    Vec4d ambient{0.0, 0.0, 0.0, 1.0};
    Vec4d diffuse{1.0, 1.0, 1.0, 1.0};
    Vec4d specular{1.0, 1.0, 1.0, 1.0};
    Vec3d attenuation{1.0, 0.0, 0.0}; ///< constant, linear, quadratic
    bool isSpot = false;
    Vec3d spotDirection;
    Real64 spotCosine = -1; ///< of half of the opening
    Real64 spotExponent = 0;
};

/// A vertex that light falls on.
struct LitVertex
{
    Pnt3d eye;                     ///< its place in eye space
    std::optional<Vec3d> normal;   ///< in eye space, of length 1 or 0
    std::optional<Vec4d> ownColor; ///< counts where the material asks for it
};

/// The colour, each number from 0 to 1. A vertex without a normal is drawn as if the material were
/// not lit.
Vec4d vertex_color(SurfaceColors const &colors, std::span<LightSource const> lights,
                   LitVertex const &vertex);
} // namespace OSG::Test
