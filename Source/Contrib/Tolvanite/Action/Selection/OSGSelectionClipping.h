#pragma once

/// \file
/// Points, segments and polygons against a convex polytope: the tests of every selection.
///
/// A selection is a crossing selection: a primitive is hit as soon as some part of it lies inside.
/// Its test runs in three grades, each cheaper than the next. `coarse_intersect` drops what lies
/// out of one plane, `containement` passes what lies wholly inside, clipping decides the rest.
///
/// A polytope is an array of planes whose normals point inwards; a point on a plane is inside. All
/// is computed in single precision, in the order of operations that is written here: what decides
/// whether a primitive is hit are the very bits of these sums. Numbers that are none make every
/// comparison false; no function fails or loops on them, and they log nothing.

#include <cmath>
#include <list>
#include <utility>

#include "OSGContribTolvaniteApi.h"
#include "OSGMemManager.h"
#include "OSGPlane.h"
#include "OSGVector.h"

namespace OSG::SelectionClipping
{
/// A segment runs parallel to a plane where its change of distance is below this.
inline constexpr Real32 ParallelEpsilon = 1e-6f;
/// An edge along a plane is added only where its squared length is above this.
inline constexpr Real32 ClosingEpsilon = 1e-12f;

enum ClipResult
{
    ClipOutside = 0,    ///< wholly outside, unchanged
    ClipInside = 1,     ///< wholly inside, unchanged
    ClipFirstMoved = 2, ///< enters the half space; the first point is on the plane now
    ClipSecondMoved = 3 ///< leaves the half space; the second point is on the plane now
};

using Segment = std::pair<Pnt3f, Pnt3f>;
/// A polygon: a loop of segments, each running from a corner to the next.
using SegmentList = std::list<Segment, MemAllocator<Segment>>;

/// False if some plane has all points outside. Conservative: true may be said of what misses the
/// polytope at an edge or a corner. True without planes, else false without points.
inline bool coarse_intersect(Pnt3f const *points, int nPoints, Plane const *planes, int nPlanes)
{
    for(int k = 0; k < nPlanes; ++k)
    {
        int i = 0;
        while(i < nPoints && !planes[k].isInHalfSpace(points[i]))
            ++i;
        if(i >= nPoints)
            return false;
    }
    return true;
}

/// Whether every point is inside every plane; true without points.
inline bool containement(Pnt3f const *points, int nPoints, Plane const *planes, int nPlanes)
{
    for(int i = 0; i < nPoints; ++i)
    {
        for(int k = 0; k < nPlanes; ++k)
        {
            if(!planes[k].isInHalfSpace(points[i]))
                return false;
        }
    }
    return true;
}

/// Clips a segment at one plane. A segment in the plane is inside; one that touches it with an end
/// is cut there all the same, and that end is written anew.
inline ClipResult segment_half_space_intersect(Segment &segment, Plane const &plane)
{
    Vec3f const direction = segment.second - segment.first;
    Real32 const denom = plane.getNormal().dot(direction);
    Real32 const num = plane.distance(segment.first);
    if(std::abs(denom) < ParallelEpsilon)
        return num < 0.f ? ClipOutside : ClipInside;
    Real32 const t = -(num / denom);
    if(denom > 0.f)
    {
        if(t < 0.f)
            return ClipInside;
        if(t > 1.f)
            return ClipOutside;
        segment.first = segment.first + direction * t;
        return ClipFirstMoved;
    }
    if(t < 0.f)
        return ClipOutside;
    if(t > 1.f)
        return ClipInside;
    segment.second = segment.first + direction * t;
    return ClipSecondMoved;
}

/// Clips the segment from `segment[0]` to `segment[1]` parametrically (after Cyrus and Beck,
/// 1978), in place. False, with the segment unchanged, where no part can be inside. The interval is
/// not compared with the segment's own ends: one that lies beside the polytope on the same line
/// comes back true, and the coarse test before it is what removes such segments.
OSG_CONTRIBTOLVANITE_API bool line_intersect(Pnt3f *segment, Plane const *planes, int nPlanes);

/// Clips a closed polygon at one plane after the other (after Sutherland and Hodgman, 1974, on
/// edges instead of corners). What is left is the boundary of the part inside, each of its corners
/// the first point of one segment; nothing is left where no part is inside. Each plane closes the
/// loop by at most one new segment, from where the polygon leaves to where it enters, unless that
/// is shorter than 1e-6. A list of n segments has at most n + nPlanes at the end.
OSG_CONTRIBTOLVANITE_API void clip_polygon_at_polytop(SegmentList &polygon, Plane const *planes,
                                                      int nPlanes);

/// What a triangle becomes at six planes, in place of a list: no memory is reserved. Segments stay
/// where they are made, only their order changes. One object may serve many triangles in turn.
class ClippedTriangle
{
  public:
    static constexpr int capacity = 3 + 6;

    bool empty() const { return _size == 0; }
    int size() const { return _size; }
    /// The segment at place `i` of the polygon.
    Segment const &operator[](int i) const { return _segments[_order[i]]; }

    /// Makes it the loop through three corners.
    void reset(Pnt3f const *corners);
    /// Clips it at one more plane; at most `capacity` - 3 times after a reset.
    void clip(Plane const &plane);

  private:
    Segment _segments[capacity];
    UInt8 _order[capacity];
    int _made = 0; // segments in use or dropped
    int _size = 0;
};

/// clip_polygon_at_polytop for the triangle of three corners and six planes: the same segments in
/// the same order, bit for bit, without a list. For geometries where many triangles cross.
OSG_CONTRIBTOLVANITE_API void clip_triangle_at_frustum(Pnt3f const *corners, Plane const *planes,
                                                       ClippedTriangle &result);
} // namespace OSG::SelectionClipping
