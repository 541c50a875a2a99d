#pragma once

/// \file
/// The corners of a geometry's triangles as they are drawn.

#include <array>

#include "DrawnItems.h"
#include "OSGGeometryIterators.h"

namespace OSG::Test
{
constexpr std::size_t MaxStages = 2;

/// A corner of a triangle.
struct DrawnVertex
{
    Vec4d clip;                               ///< before the division by w
    Vec4d eye;                                ///< in the eye's coordinates
    Vec4d color;                              ///< of the side that is seen
    std::array<Vec4d, MaxStages> texCoords{}; ///< s, t, r, q of each unit
};

struct DrawnTriangle
{
    std::array<Vec4d, 3> corners() const
    {
        return {vertices[0].clip, vertices[1].clip, vertices[2].clip};
    }
    std::array<DrawnVertex, 3> vertices;
};

/// The item's triangles in order. Those with a corner that is not finite are left out.
std::vector<DrawnTriangle> drawn_triangles(DrawnItem const &item, SlowView const &view);
/// The item's lines and points as the ends of lines; both ends of a point are the same.
std::vector<std::array<Vec4d, 2>> drawn_strokes(DrawnItem const &item, SlowView const &view);
} // namespace OSG::Test
