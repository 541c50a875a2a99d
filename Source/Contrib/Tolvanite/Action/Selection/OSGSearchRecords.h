#pragma once

/// \file
/// What all searches share: the normals of their records.

#include "OSGGeometryView.h"
#include "OSGSelectionSearch.h"

namespace OSG::SelectionSearch
{
/// The geometry's normal at a vertex of its sequence; zero where there is none.
inline Vec3f normal_at(Geometry const &geometry, UInt64 vertex)
{
    VertexChannel const normals(geometry.getNormals(), geometry.getIndex(Geometry::NormalsSlot));
    return normals.vector(normals.elementOf(vertex));
}

/// The normal of the face where `normal` is missing: all its coordinates are below 1e-6.
inline Vec3f complete_normal(Vec3f const &normal, Pnt3f const *triangle)
{
    constexpr Real32 ZeroEpsilon = 1e-6f;
    if(!normal.equals(Vec3f(), ZeroEpsilon))
        return normal;
    Vec3f face = (triangle[1] - triangle[0]).cross(triangle[2] - triangle[0]);
    face.normalize();
    return face == face ? face : Vec3f(); // a NaN corner, or an overflow
}
} // namespace OSG::SelectionSearch
