#include "OSGSelectionClipping.h"

#include <algorithm>
#include <limits>

namespace OSG::SelectionClipping
{
namespace
{
/// The places where the boundary of a polygon crosses one plane. A convex polygon crosses it at
/// most twice: it enters at one place and leaves at the other. Both points start at the origin.
struct Crossings
{
    int count = 0;
    Pnt3f entry;
    Pnt3f exit;

    /// Notes the result of clipping one segment. True at the second crossing, where the loop has to
    /// be closed. It is never true again, so a plane adds at most one segment.
    bool closes(ClipResult result, Segment const &segment)
    {
        if(result == ClipFirstMoved)
            entry = segment.first;
        else if(result == ClipSecondMoved)
            exit = segment.second;
        else
            return false;
        return ++count == 2;
    }
    bool worth_closing() const { return (entry - exit).squareLength() > ClosingEpsilon; }
};

void clip_at_plane(SegmentList &polygon, Plane const &plane)
{
    Crossings crossings;
    auto entered = polygon.end();
    for(auto element = polygon.begin(); element != polygon.end();)
    {
        ClipResult const result = segment_half_space_intersect(*element, plane);
        if(result == ClipOutside)
        {
            element = polygon.erase(element);
            continue;
        }
        if(result == ClipFirstMoved)
            entered = element;
        if(crossings.closes(result, *element) && entered != polygon.end() &&
           crossings.worth_closing())
            polygon.insert(entered, Segment(crossings.exit, crossings.entry));
        ++element;
    }
}
} // namespace

bool line_intersect(Pnt3f *segment, Plane const *planes, int nPlanes)
{
    if(nPlanes < 1)
        return true;
    Pnt3f const a = segment[0];
    Vec3f const direction = segment[1] - a;
    Real32 tMin = -std::numeric_limits<Real32>::max();
    Real32 tMax = std::numeric_limits<Real32>::max();
    for(int k = 0; k < nPlanes; ++k)
    {
        Real32 const denom = planes[k].getNormal().dot(direction);
        Real32 const num = planes[k].distance(a);
        if(std::abs(denom) < ParallelEpsilon)
        {
            if(num < 0.f)
                return false;
            continue;
        }
        Real32 const t = -(num / denom);
        if(!(denom < 0.f))
            tMin = t > tMin ? t : tMin;
        else
            tMax = t < tMax ? t : tMax;
        if(tMin > tMax)
            return false;
    }
    // Both ends are computed from the first end before it is moved. A `tMax` beyond 1 or a `tMin`
    // below 0 lies outside the segment, whose own end then stays.
    if(tMax <= 1.f)
        segment[1] = a + direction * tMax;
    if(tMin >= 0.f)
        segment[0] = a + direction * tMin;
    return true;
}

void clip_polygon_at_polytop(SegmentList &polygon, Plane const *planes, int nPlanes)
{
    for(int k = 0; k < nPlanes && !polygon.empty(); ++k)
        clip_at_plane(polygon, planes[k]);
}

void ClippedTriangle::reset(Pnt3f const *corners)
{
    for(int i = 0; i < 3; ++i)
    {
        _segments[i].first = corners[i];
        _segments[i].second = corners[i == 2 ? 0 : i + 1];
        _order[i] = static_cast<UInt8>(i);
    }
    _made = 3;
    _size = 3;
}

void ClippedTriangle::clip(Plane const &plane)
{
    Crossings crossings;
    int entered = -1; // place of the entering segment among those kept
    int closing = -1; // place of the closing segment, which is inserted at the end
    int kept = 0;
    for(int i = 0; i < _size; ++i)
    {
        UInt8 const element = _order[i];
        ClipResult const result = segment_half_space_intersect(_segments[element], plane);
        if(result == ClipOutside)
            continue;
        if(result == ClipFirstMoved)
            entered = kept;
        _order[kept++] = element;
        if(crossings.closes(result, _segments[element]) && entered >= 0 &&
           crossings.worth_closing())
        {
            closing = entered;
            _segments[_made] = Segment(crossings.exit, crossings.entry);
        }
    }
    _size = kept;
    if(closing < 0)
        return;
    std::copy_backward(_order + closing, _order + _size, _order + _size + 1);
    _order[closing] = static_cast<UInt8>(_made++);
    ++_size;
}

void clip_triangle_at_frustum(Pnt3f const *corners, Plane const *planes, ClippedTriangle &result,
                              UInt32 which)
{
    result.reset(corners);
    for(int k = 0; k < 6 && !result.empty(); ++k)
        if((which >> k & 1u) != 0)
            result.clip(planes[k]);
}
} // namespace OSG::SelectionClipping
