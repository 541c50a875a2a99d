#pragma once

/// \file
/// What one frame draws, in the order in which it is drawn: the result of collecting and ordering,
/// and all that the drawing itself takes. No context is needed to make or read it.

#include <vector>

#include "OSGColor.h"
#include "OSGDrawState.h"
#include "OSGMatrix.h"
#include "OSGVector.h"

namespace OSG
{
class DrawShape;

/// Source of light in eye coordinates, as OpenGL takes it.
struct LightValues
{
    Color4f ambient{0, 0, 0, 1};
    Color4f diffuse{1, 1, 1, 1};
    Color4f specular{1, 1, 1, 1};
    Vec4f position{0, 0, 1, 0}; ///< w is 0 for a direction
    Vec3f spotDirection{0, 0, -1};
    Real32 spotCutOff = 180; ///< degrees; 180 for no cone
    Real32 spotExponent = 0;
    Vec3f attenuation{1, 0, 0}; ///< constant, linear, quadratic

    bool operator==(LightValues const &) const = default;
};
using LightSet = std::vector<LightValues>; ///< at most eight

/// A shape at one place of the scene.
struct DrawItem
{
    UInt32 shape;  ///< in DrawList::shapes
    UInt32 space;  ///< in DrawList::spaces
    UInt32 state;  ///< in DrawList::states
    UInt32 lights; ///< in DrawList::lights
};

struct DrawList
{
    struct Space
    {
        Matrix toEye;
        bool isMirrored; ///< the matrix has a negative determinant
    };

    std::vector<DrawItem> opaque;      ///< equal states, then equal layouts, stand together
    std::vector<DrawItem> transparent; ///< from the farthest to the nearest
    /// Each shape once; not counted. As long as `shapesNumber` is the same, so is this table:
    /// drawing may keep what belongs to the shapes by their place in it.
    std::vector<DrawShape const *> shapes;
    UInt64 shapesNumber = 0; ///< no other table of the process has the same
    /// As long as it is the same, no shape of the table has another mesh than before.
    UInt64 meshEpoch = 0;
    std::vector<Space> spaces;
    std::vector<DrawState const *> states; ///< no two are equal
    std::vector<LightSet> lights;
};
} // namespace OSG
