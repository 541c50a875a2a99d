#pragma once

/// \file
/// Tests points, segments and polygons against a convex polytope. Every selection uses these tests.
///
/// A primitive is hit if any part of it lies inside. There are three tests, and each is cheaper
/// than the next. `coarse_intersect` rejects a primitive that lies wholly outside one plane.
/// `containement` accepts a primitive that lies wholly inside. Clipping decides the others.
///
/// A polytope is an array of planes whose normals point inwards. A point on a plane is inside.
/// Everything is computed in single precision and in the order of operations that is written here,
/// because the last bit of a sum may decide whether a primitive is hit. A comparison with NaN is
/// false. NaN makes no function fail, loop or log.

#include <cmath>
#include <list>
#include <utility>

#include "OSGContribTolvaniteApi.h"
#include "OSGMemManager.h"
#include "OSGPlane.h"
#include "OSGVector.h"

namespace OSG::SelectionClipping
{
/// A segment is parallel to a plane if the distances of its ends differ by less than this.
inline constexpr Real32 ParallelEpsilon = 1e-6f;
/// An edge in a clipping plane is added only if its squared length is above this: it is longer than
/// 1e-6.
inline constexpr Real32 ClosingEpsilon = 1e-12f;

enum ClipResult
{
    ClipOutside = 0,    ///< wholly outside, unchanged
    ClipInside = 1,     ///< wholly inside, unchanged
    ClipFirstMoved = 2, ///< enters the half space; the first point is on the plane now
    ClipSecondMoved = 3 ///< leaves the half space; the second point is on the plane now
};

using Segment = std::pair<Pnt3f, Pnt3f>;
/// A polygon: a loop of segments, each from a corner to the next.
using SegmentList = std::list<Segment, MemAllocator<Segment>>;

/// False if all points are outside one plane. The result may be true for points that pass by an
/// edge or a corner of the polytope. Without planes it is true. With planes but without points it
/// is false.
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

/// Whether every point is inside every plane. True without points.
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

/// Clips a segment at one plane. A segment within the plane is inside. If only an end lies on the
/// plane, the segment counts as cut there, and the end is computed again.
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

/// Clips the segment from `segment[0]` to `segment[1]` in place (the parametric method of Cyrus and
/// Beck, 1978). False, with the segment unchanged, if the line through it misses the polytope. The
/// result is also true for a segment on a line that meets the polytope before or behind the
/// segment. Callers reject such segments by the coarse test first.
OSG_CONTRIBTOLVANITE_API bool line_intersect(Pnt3f *segment, Plane const *planes, int nPlanes);

/// Clips a closed polygon at one plane after the other (the method of Sutherland and Hodgman, 1974,
/// with edges instead of corners). The result is the boundary of the part inside; each corner is
/// the first point of one segment. The list is empty if no part is inside. Each plane adds at most
/// one segment that closes the loop, from the point where the polygon leaves the half space to the
/// point where it enters. A closing segment shorter than 1e-6 is left out. A list of n segments has
/// at most n + nPlanes segments at the end.
OSG_CONTRIBTOLVANITE_API void clip_polygon_at_polytop(SegmentList &polygon, Plane const *planes,
                                                      int nPlanes);

/// A triangle that is clipped at up to six planes, without a list and without allocating memory.
/// Segments are not moved; only their order changes. One object may serve many triangles one after
/// the other.
class ClippedTriangle
{
  public:
    static constexpr int Capacity = 3 + 6;

    bool empty() const { return _size == 0; }
    int size() const { return _size; }
    /// The segment at place `i` of the polygon.
    Segment const &operator[](int i) const { return _segments[_order[i]]; }

    /// Starts again with the triangle of three corners.
    void reset(Pnt3f const *corners);
    /// Clips the polygon at one more plane. At most `Capacity` - 3 calls after a reset.
    void clip(Plane const &plane);

  private:
    Segment _segments[Capacity];
    UInt8 _order[Capacity];
    int _made = 0; // segments made since the reset, dropped ones included
    int _size = 0;
};

/// Like clip_polygon_at_polytop for a triangle and six planes: the same segments in the same order
/// and with the same bits, but without a list. For geometries with many triangles.
/// `which` has the bits of the planes to clip at; the others are known to change nothing.
OSG_CONTRIBTOLVANITE_API void clip_triangle_at_frustum(Pnt3f const *corners, Plane const *planes,
                                                       ClippedTriangle &result,
                                                       UInt32 which = 0x3F);
} // namespace OSG::SelectionClipping
