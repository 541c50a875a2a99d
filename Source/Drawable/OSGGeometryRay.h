#pragma once

/// \file
/// Where a ray first meets a geometry. In the geometry's own space, without a scene.

#include "OSGDrawableApi.h"
#include "OSGLine.h"

namespace OSG
{
class Geometry;

/// One triangle that a ray meets.
struct RayHit
{
    Real64 distance = 0;
    Int32 triangle = -1; ///< running number as TriangleIterator counts; -1 for no hit
    Vec3f normal;        ///< of the face, length 1, where its corners run counter-clockwise
};

/// The nearest triangle from distance 0 to `reach`, both included; of equal distances the first.
/// Triangles are seen from both sides. Those that the ray runs along (to within 1e-12 of the sine
/// of the angle), those without an area and those with a NaN in a corner are not met.
///
/// Computed in double precision, so that edges that triangles share leave no gaps to speak of
/// (Moeller, Trumbore: Fast, minimum storage ray/triangle intersection, 1997).
OSG_DRAWABLE_API RayHit nearest_triangle(Geometry const &geometry, Line const &ray, Real64 reach);
} // namespace OSG
