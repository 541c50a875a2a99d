#pragma once

#include "OSGBaseTypes.h"
#include "OSGColor.h"

namespace OSG
{
/// What is drawn of faces. Lines and points are drawn in every style. What is hidden, isolated or
/// cut away by sections is so in every style as well.
enum class DrawStyle : UInt8
{
    Shaded,          ///< as materials and lights have it
    ShadedWithWires, ///< the same, and over it the edges of all triangles in the line colour
    Wires,           ///< edges of triangles alone, in the diffuse colours of materials and vertices
                     ///< without light, texture or transparency
    OneColor         ///< everything in the line colour, without light or transparency
};

/// How a view draws what it shows.
struct DrawLook
{
    DrawStyle style = DrawStyle::Shaded;
    Color3f lineColor{0, 0, 0};
    /// Faces lie a little deeper than they are, so that lines in them are seen. Those of
    /// ShadedWithWires do so in any case.
    bool pushesFacesBack = false;
    /// Edges are smooth where the frame buffer has several samples a pixel.
    bool isMultisampled = false;

    friend bool operator==(DrawLook const &, DrawLook const &) = default;
};
} // namespace OSG
