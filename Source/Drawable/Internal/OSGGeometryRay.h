#pragma once

/// \file
/// Where a ray first meets a geometry. In the geometry's own space, without a scene.

#include "OSGDrawableApi.h"
#include "OSGLine.h"

namespace OSG
{
class Geometry;
class PrimitiveIndex;

/// One triangle that a ray meets.
struct RayHit
{
    Real64 distance = 0;
    Int32 triangle = -1; ///< running number as TriangleIterator counts; -1 for no hit
    Vec3f normal;        ///< of the face, length 1, where its corners run counter-clockwise
};

/// The nearest triangle from distance 0 to `reach`, both included; of equal distances the first.
/// Triangles are seen from both sides. Those that the ray runs along (to within 1e-12 of the sine
/// of the angle), those without an area and those with a NaN in a corner are not met. Where a ray
/// nearly runs along a triangle, rounding can put the hit elsewhere. It counts only if it lies in
/// the triangle's box, to within a millionth of the way from the ray's position to the box's far
/// corner.
///
/// Computed in double precision, so that edges that triangles share leave no gaps to speak of
/// (Moeller, Trumbore: Fast, minimum storage ray/triangle intersection, 1997).
OSG_DRAWABLE_API RayHit nearest_triangle(Geometry const &geometry, Line const &ray, Real64 reach);

/// Whether the index can answer for the ray: both have numbers that are finite and not larger than
/// 1e18, and the ray's direction has about length 1.
OSG_DRAWABLE_API bool can_cast(PrimitiveIndex const &index, Line const &ray);
/// The same bits as from nearest_triangle(), by an index of the geometry's triangles that
/// can_cast() allows.
OSG_DRAWABLE_API RayHit nearest_triangle_by_index(PrimitiveIndex const &index,
                                                  Geometry const &geometry, Line const &ray,
                                                  Real64 reach);
} // namespace OSG
