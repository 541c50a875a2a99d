#pragma once

/// \file
/// Which primitives of one geometry lie in a frustum, and which are nearest and farthest.
///
/// Everything is in the geometry's own space. `planes` are the frustum's six, `plane` is the one
/// that distances are measured from. Nothing is reserved per primitive; what is out of range in the
/// geometry is passed over and reported by it once.

#include "OSGContribTolvaniteApi.h"
#include "OSGFrustumVolume.h"

namespace OSG
{
class Geometry;

namespace SelectionSearch
{
/// The best corner so far, by distance from the reference plane. All comparisons let an equal
/// distance pass, so that of several the last one stays; a NaN distance never does.
struct Extreme
{
    Real32 distance;
    Int32 index = -1; ///< running number of the primitive, -1 while none was taken
    Pnt3f point;
    Vec3f normal;
    /// Whether `point` is the place of this corner. The near corner of a triangle that lies wholly
    /// inside leaves the point as it was.
    bool hasPoint = false;
};

struct Extremes
{
    /// A near corner must not be farther than the largest number.
    Extreme near{3.4028235e38f, -1, {}, {}, false};
    /// A far corner must reach the smallest normal number: one on the reference plane or behind it
    /// never is the far one.
    Extreme far{1.1754944e-38f, -1, {}, {}, false};
};

/// Triangles, clipped to the frustum where they cross it. Of a crossing one every corner that is
/// left counts, with the face's normal. Of one that lies wholly inside the three corners count with
/// the geometry's normals, where zero ones give way to the face's; it leaves the near point as it
/// was. The normal of a face without a direction is short or zero, never NaN.
OSG_CONTRIBTOLVANITE_API Extremes find_triangles(Geometry const &geometry, Plane const *planes,
                                                 Plane const &plane);

/// Lines, clipped to the frustum; the normals are those of the unclipped ends.
OSG_CONTRIBTOLVANITE_API Extremes find_lines(Geometry const &geometry, Plane const *planes,
                                             Plane const &plane);

/// Points of point primitives. `index` names the primitive, and the normal is that of its first
/// point.
OSG_CONTRIBTOLVANITE_API Extremes find_points(Geometry const &geometry, Plane const *planes,
                                              Plane const &plane);

/// Whether some triangle lies in the frustum, wholly or in part. Ends at the first one.
OSG_CONTRIBTOLVANITE_API bool has_triangle(Geometry const &geometry, Plane const *planes);
} // namespace SelectionSearch
} // namespace OSG
