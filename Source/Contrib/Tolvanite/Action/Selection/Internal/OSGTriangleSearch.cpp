#include <algorithm>

#include "OSGIndexedSearch.h"
#include "OSGSearchBoxes.h"
#include "OSGSearchRecords.h"
#include "OSGTriangleReader.h"

namespace OSG::SelectionSearch::Indexed
{
using Grade = FrustumLanes::Grade;

namespace
{
/// Corners of clipped triangles stay between those of the triangle but for rounding, with one
/// exception. Where a corner lies on a plane, two edges may count as entering there; the place
/// where the boundary leaves is then not set, and the polygon is closed from the origin. So the
/// corners of such a triangle lie between its own and the origin.
class TriangleSearch
{
  public:
    explicit TriangleSearch(TriangleGround &ground)
        : _ground(ground)
        , _margin(ground.margin(ground.reference))
        , _origin(ground.reference.distance(Pnt3f()))
    {
    }

    Extremes find(Geometry const &geometry)
    {
        _ground.visitUntamed(
            [this](UInt32 i, UInt32)
            {
                offer(i);
                return true;
            });
        // A block that was looked at for the nearest corner has also offered its farthest one. So
        // the second walk is left out where the first one has passed nothing over.
        SeenBlocks seen;
        bool const hasRefused = walkFor(_near,
                                        [&](UInt32 block, UInt32 state)
                                        {
                                            seen.add(block);
                                            offerBlock(block, state);
                                            return true;
                                        });
        if(hasRefused)
            walkFor(_far,
                    [&](UInt32 block, UInt32 state)
                    {
                        if(!seen.has(block))
                            offerBlock(block, state);
                        return true;
                    });
        Extremes result;
        complete(geometry, _near, result.near);
        complete(geometry, _far, result.far);
        if(_near.isFound() && _near.isContained())
            findNearPoint(result.near);
        return result;
    }

  private:
    /// Walks for the nearest or the farthest corner. True where boxes were passed over that were
    /// not outside.
    template <class Best, class Visit>
    bool walkFor(Best const &best, Visit visit)
    {
        ExtremeBoxes<Best> boxes(_ground.boxPlanes, best, {0.f, _margin},
                                 Best::key(_origin, _origin));
        _ground.walkBlocks(boxes, visit);
        return boxes.hasRefused();
    }

    void offerBlock(UInt32 block, UInt32 state)
    {
        BlockReader const reader(_ground, block, state);
        for(UInt32 rest = reader.found(); rest != 0; rest &= rest - 1)
        {
            UInt32 const t = static_cast<UInt32>(__builtin_ctz(rest));
            UInt32 const i = reader.primitive(t);
            if(!reader.crosses(t))
                for(UInt32 v = 0; v < 3; ++v)
                    offerBoth(reader.distance(t, v), i, reader.corner(t, v), static_cast<int>(v));
            else if(mayImprove(_near, reader, t) || mayImprove(_far, reader, t))
            {
                reader.clip(t, _ground, _clipped);
                offerClipped(i);
            }
        }
    }

    /// A triangle without bounds.
    void offer(UInt32 i)
    {
        Pnt3f corners[3];
        _ground.reader.read(i, corners);
        Grade const found = _ground.lanes.grade(corners);
        if(found == Grade::Contained)
            for(int v = 0; v < 3; ++v)
                offerBoth(_ground.reference.distance(corners[v]), i, corners[v], v);
        if(found == Grade::Crossing)
        {
            clip_triangle_at_frustum(corners, _ground.planes, _clipped);
            offerClipped(i);
        }
    }

    void offerBoth(Real32 distance, UInt32 i, Pnt3f const &point, int corner)
    {
        _near.offer(distance, i, point, corner);
        _far.offer(distance, i, point, corner);
    }

    void offerClipped(UInt32 i)
    {
        for(int c = 0; c < _clipped.size(); ++c)
        {
            Pnt3f const &point = _clipped[c].first;
            offerBoth(_ground.reference.distance(point), i, point, NoCorner);
        }
    }

    /// Whether clipping triangle `t` may give a better corner.
    template <class Best>
    bool mayImprove(Best const &best, BlockReader const &reader, UInt32 t) const
    {
        UInt32 const i = reader.primitive(t);
        for(UInt32 v = 0; v < 3; ++v)
        {
            Real32 const distance = reader.distance(t, v);
            if(best.wants(Best::key(distance, distance) - _margin, i))
                return true;
        }
        return best.wants(Best::key(_origin, _origin) - _margin, i) && !reader.crossesOneClearly(t);
    }

    template <class Best>
    void complete(Geometry const &geometry, Best const &best, Extreme &extreme)
    {
        if(!best.isFound())
            return;
        UInt32 const i = best.getPrimitive();
        extreme.distance = best.getDistance();
        extreme.index = static_cast<Int32>(i);
        extreme.point = best.getPoint();
        extreme.hasPoint = true;
        Pnt3f corners[3];
        _ground.reader.read(i, corners);
        Vec3f const own = best.isContained()
                              ? normal_at(geometry, _ground.reader.vertexOf(i, best.getCorner()))
                              : Vec3f();
        extreme.normal = complete_normal(own, corners);
    }

    // The loop sets the near point at crossing triangles alone, so it is that of the last crossing
    // corner before the nearest one that no corner before it is nearer than. That corner is the
    // nearest crossing one up to some triangle. If a contained triangle before it is nearer, all
    // crossing ones behind the first such triangle are out, and the same is asked of those before.
    void findNearPoint(Extreme &near)
    {
        constexpr int MostLooks = 16;
        near.point = Pnt3f();
        near.hasPoint = false;
        UInt32 end = _near.getPrimitive();
        for(int look = 0; look < MostLooks; ++look)
        {
            NearBest const crossing = findCrossing(end);
            if(!crossing.isFound())
                return;
            end = findContained(crossing.getDistance(), crossing.getPrimitive());
            if(end == crossing.getPrimitive())
            {
                near.point = crossing.getPoint();
                return;
            }
        }
        near.point = walkToNearPoint(end);
    }

    // As the loop does it, for triangles in an order that needs very many looks.
    Pnt3f walkToNearPoint(UInt32 end)
    {
        _near = NearBest();
        _far = FarBest();
        Pnt3f point;
        for(UInt32 i = 0; i < end; ++i)
        {
            offer(i);
            if(_near.isFound() && !_near.isContained())
                point = _near.getPoint();
        }
        return point;
    }

    /// The nearest corner of the crossing triangles before `end`.
    NearBest findCrossing(UInt32 end)
    {
        NearBest best;
        _ground.visitUntamed(
            [&](UInt32 i, UInt32)
            {
                Pnt3f corners[3];
                _ground.reader.read(i, corners);
                if(i >= end || _ground.lanes.grade(corners) != Grade::Crossing)
                    return true;
                clip_triangle_at_frustum(corners, _ground.planes, _clipped);
                offerCrossing(i, best);
                return true;
            });
        CrossingBoxes boxes(_ground.boxPlanes, best, _margin, _origin, end);
        _ground.walkBlocks(boxes,
                           [&](UInt32 block, UInt32 state)
                           {
                               offerCrossingOf(block, state, end, best);
                               return true;
                           });
        return best;
    }

    void offerCrossingOf(UInt32 block, UInt32 state, UInt32 end, NearBest &best)
    {
        BlockReader const reader(_ground, block, state);
        for(UInt32 rest = reader.found() & reader.grades.crossing; rest != 0; rest &= rest - 1)
        {
            UInt32 const t = static_cast<UInt32>(__builtin_ctz(rest));
            UInt32 const i = reader.primitive(t);
            if(i >= end || !mayImprove(best, reader, t))
                continue;
            reader.clip(t, _ground, _clipped);
            offerCrossing(i, best);
        }
    }

    void offerCrossing(UInt32 i, NearBest &best) const
    {
        for(int c = 0; c < _clipped.size(); ++c)
        {
            Pnt3f const &point = _clipped[c].first;
            best.offer(_ground.reference.distance(point), i, point, NoCorner);
        }
    }

    /// The first contained triangle before `end` with a corner nearer than `limit`; else `end`.
    UInt32 findContained(Real32 limit, UInt32 end)
    {
        UInt32 first = end;
        auto const visit = [&](UInt32 i, UInt32 state)
        {
            Pnt3f corners[3];
            if(i < first)
            {
                _ground.reader.read(i, corners);
                if(isNearer(corners, limit) &&
                   (state == 0 || _ground.lanes.grade(corners) == Grade::Contained))
                    first = i;
            }
            return true;
        };
        _ground.visitUntamed(visit);
        FirstBoxes boxes(_ground.boxPlanes, limit, first);
        _ground.walk(boxes, visit);
        return first;
    }

    bool isNearer(Pnt3f const *corners, Real32 limit) const
    {
        return _ground.reference.distance(corners[0]) < limit ||
               _ground.reference.distance(corners[1]) < limit ||
               _ground.reference.distance(corners[2]) < limit;
    }

    TriangleGround &_ground;
    Real32 _margin; // of distances from the reference plane
    Real32 _origin; // distance of the origin
    NearBest _near;
    FarBest _far;
    ClippedTriangle _clipped;
};
} // namespace

Extremes find_triangles(PrimitiveIndex const &index, Geometry const &geometry, Plane const *planes,
                        Plane const &plane)
{
    TriangleGround ground(index, geometry, planes, plane);
    return TriangleSearch(ground).find(geometry);
}

bool has_triangle(PrimitiveIndex const &index, Geometry const &geometry, Plane const *planes)
{
    TriangleGround ground(index, geometry, planes, planes[0]);
    AnyBoxes boxes(ground.boxPlanes);
    ClippedTriangle clipped;
    auto const visit = [&](UInt32 i, UInt32)
    {
        Pnt3f corners[3];
        ground.reader.read(i, corners);
        Grade const grade = ground.lanes.grade(corners);
        if(grade == Grade::Crossing)
            clip_triangle_at_frustum(corners, planes, clipped);
        boxes.isFound = grade == Grade::Contained || (grade == Grade::Crossing && !clipped.empty());
        return !boxes.isFound;
    };
    ground.visitUntamed(visit);
    if(!boxes.isFound)
        ground.walk(boxes, visit);
    return boxes.isFound;
}
} // namespace OSG::SelectionSearch::Indexed
