#pragma once

/// \file
/// Finds the nearest and the farthest primitive of one geometry in a frustum.
///
/// Everything is in the geometry's own space. `planes` are the six planes of the frustum, `plane`
/// is the reference plane of distances. No memory is allocated per primitive. Indices that are out
/// of range are skipped, and the geometry logs them once.
///
/// Large geometries are searched through an index of their primitives (PrimitiveIndexUse says when)
/// unless the caller asks for the plain loop. The answers are the same to the last bit. Two threads
/// may search at once while nobody edits.

#include "OSGContribTolvaniteApi.h"
#include "OSGFrustumVolume.h"

namespace OSG
{
class Geometry;

namespace SelectionSearch
{
/// The nearest or farthest corner so far, by distance from the reference plane. A corner of equal
/// distance replaces an earlier one. A NaN distance replaces nothing.
struct Extreme
{
    Real32 distance;
    Int32 index = -1; ///< index of the primitive; -1 while there is none
    Pnt3f point;
    Vec3f normal;
    /// Whether `point` is the place of this corner. The near corner of a triangle that lies wholly
    /// inside does not set the point.
    bool hasPoint = false;
};

struct Extremes
{
    /// The start value is the largest float, so any finite distance is near enough.
    Extreme near{3.4028235e38f, -1, {}, {}, false};
    /// The start value is the smallest normal float, so a corner on the reference plane or behind
    /// it is never the far corner.
    Extreme far{1.1754944e-38f, -1, {}, {}, false};
};

/// How a search goes about it.
struct Way
{
    bool mayUseIndex = true;
    bool usedIndex = false; ///< set to true by a search through an index
};

/// Searches triangles. A triangle that crosses the frustum is clipped; its remaining corners count,
/// with the normal of the face. A triangle that lies wholly inside counts with its three corners
/// and the geometry's normals. A zero normal is replaced by the normal of the face. Such a triangle
/// does not set the near point. The normal of a degenerate face is short or zero, never NaN.
OSG_CONTRIBTOLVANITE_API Extremes find_triangles(Geometry const &geometry, Plane const *planes,
                                                 Plane const &plane, Way *way = nullptr);

/// Searches lines. Lines are clipped; the normals are those of the ends before clipping.
OSG_CONTRIBTOLVANITE_API Extremes find_lines(Geometry const &geometry, Plane const *planes,
                                             Plane const &plane, Way *way = nullptr);

/// Searches the points of point primitives. `index` is the index of the primitive, and the normal
/// is that of its first point.
OSG_CONTRIBTOLVANITE_API Extremes find_points(Geometry const &geometry, Plane const *planes,
                                              Plane const &plane, Way *way = nullptr);

/// Whether any triangle lies in the frustum, wholly or in part. Stops at the first one.
OSG_CONTRIBTOLVANITE_API bool has_triangle(Geometry const &geometry, Plane const *planes,
                                           Way *way = nullptr);
} // namespace SelectionSearch
} // namespace OSG
