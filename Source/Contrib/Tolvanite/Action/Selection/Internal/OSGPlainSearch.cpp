#include "OSGPlainSearch.h"

#include <algorithm>
#include <memory>

#include "OSGFrustumLanes.h"
#include "OSGPartCursor.h"
#include "OSGSearchRecords.h"
#include "OSGSelectionClipping.h"

namespace OSG::SelectionSearch::Plain
{
using SelectionClipping::ClippedTriangle;

namespace
{
bool passes_near(Extreme const &near, Real32 distance) { return near.distance >= distance; }
bool passes_far(Extreme const &far, Real32 distance) { return distance >= far.distance; }

using TriangleCursor = PartCursor<TriangleRule>;

/// Takes the corner if it is the nearest or the farthest so far. `vertex` is the one whose normal
/// counts. An equal distance counts, so the last of several corners stays.
class PlainExtremes
{
  public:
    explicit PlainExtremes(Plane const &plane)
        : _plane(plane)
    {
    }

    void offer(Pnt3f const &point, UInt32 index, UInt64 vertex)
    {
        Real32 const distance = _plane.distance(point);
        if(passes_near(_extremes.near, distance))
        {
            take(_extremes.near, distance, index, point);
            _nearVertex = vertex;
        }
        if(passes_far(_extremes.far, distance))
        {
            take(_extremes.far, distance, index, point);
            _farVertex = vertex;
        }
    }

    /// The result with the geometry's normals.
    Extremes finish(Geometry const &geometry)
    {
        if(_extremes.near.index >= 0)
            _extremes.near.normal = normal_at(geometry, _nearVertex);
        if(_extremes.far.index >= 0)
            _extremes.far.normal = normal_at(geometry, _farVertex);
        return _extremes;
    }

  private:
    static void take(Extreme &extreme, Real32 distance, UInt32 index, Pnt3f const &point)
    {
        extreme = {distance, static_cast<Int32>(index), point, {}, true};
    }

    Plane const &_plane;
    Extremes _extremes;
    UInt64 _nearVertex = 0;
    UInt64 _farVertex = 0;
};

/// The nearest and the farthest corner of many triangles, and the triangles that they belong to.
/// Normals are looked up at the end instead of for each new extreme.
class TriangleExtremes
{
  public:
    explicit TriangleExtremes(Plane const &plane)
        : _plane(plane)
    {
    }

    void addContained(TriangleCursor const &cursor, Pnt3f const *corners)
    {
        for(int v = 0; v < 3; ++v)
        {
            // A triangle that lies wholly inside keeps the near point of the last crossing
            // triangle.
            Pnt3f const nearPoint = _extremes.near.point;
            if(add(cursor, corners, corners[v], v))
            {
                _extremes.near.point = nearPoint;
                _extremes.near.hasPoint = false;
            }
        }
    }

    void addClipped(TriangleCursor const &cursor, Pnt3f const *corners,
                    ClippedTriangle const &clipped)
    {
        for(int i = 0; i < clipped.size(); ++i)
            add(cursor, corners, clipped[i].first, NoCorner);
    }

    /// The result. Missing normals are replaced by those of the faces.
    Extremes finish(Geometry const &geometry)
    {
        complete(geometry, _extremes.near, _near);
        complete(geometry, _extremes.far, _far);
        return _extremes;
    }

  private:
    static constexpr int NoCorner = -1;

    struct Source
    {
        Pnt3f triangle[3];
        UInt64 vertex = 0;
        bool hasNormal = false; // the geometry's; the face's for a clipped triangle
    };

    /// Offers a corner of the triangle or of its clipped part. True where it becomes the near
    /// corner.
    bool add(TriangleCursor const &cursor, Pnt3f const *corners, Pnt3f const &point, int corner)
    {
        Real32 const distance = _plane.distance(point);
        bool const isNear = passes_near(_extremes.near, distance);
        bool const isFar = passes_far(_extremes.far, distance);
        Extreme const taken = {distance, static_cast<Int32>(cursor.getIndex()), point, {}, true};
        if(isNear)
            take(_extremes.near, _near, taken, cursor, corners, corner);
        if(isFar)
            take(_extremes.far, _far, taken, cursor, corners, corner);
        return isNear;
    }

    static void take(Extreme &extreme, Source &source, Extreme const &taken,
                     TriangleCursor const &cursor, Pnt3f const *corners, int corner)
    {
        extreme = taken;
        std::copy_n(corners, 3, source.triangle);
        source.hasNormal = corner != NoCorner;
        if(source.hasNormal)
            source.vertex = cursor.getVertex(corner);
    }

    static void complete(Geometry const &geometry, Extreme &extreme, Source const &source)
    {
        Vec3f const own = source.hasNormal ? normal_at(geometry, source.vertex) : Vec3f();
        extreme.normal = complete_normal(own, source.triangle);
    }

    Plane const &_plane;
    Extremes _extremes;
    Source _near;
    Source _far;
};

/// For each element of the position array, the planes that it lies outside of. In a closed surface
/// a vertex is a corner of six triangles on average, and the table tests it once.
class OutsideTable
{
  public:
    explicit OutsideTable(FrustumLanes const &lanes)
        : _lanes(lanes)
    {
    }

    /// Fills the table if corners share positions at least twice on average. Without memory it
    /// stays empty, and corners are tested one by one.
    void fill(VertexChannel const &positions)
    {
        UInt32 const count = positions.size();
        if(positions.vertexCount() / 2 < count)
            return;
        _outside.reset(static_cast<UInt8 *>(MemMalloc(count)));
        for(UInt32 element = 0; _outside != nullptr && element < count; ++element)
            _outside[element] = static_cast<UInt8>(_lanes.outside(positions.point(element)));
    }

    FrustumLanes::Grade grade(TriangleCursor const &it) const
    {
        if(_outside != nullptr)
            return FrustumLanes::grade(_outside[it.getElement(0)], _outside[it.getElement(1)],
                                       _outside[it.getElement(2)]);
        return FrustumLanes::grade(_lanes.outside(it.getPosition(0)),
                                   _lanes.outside(it.getPosition(1)),
                                   _lanes.outside(it.getPosition(2)));
    }

  private:
    struct Release
    {
        void operator()(UInt8 *block) const { MemFree(block); }
    };

    FrustumLanes const &_lanes;
    std::unique_ptr<UInt8[], Release> _outside;
};

/// Calls `visit` for each triangle that passes the coarse test, until `visit` returns false.
/// Returns how many triangles it has looked at.
template <class Visit>
UInt32 visit_triangles(Geometry const &geometry, Plane const *planes, Visit visit)
{
    // The table costs time for all positions, so a search that ends at one of the first triangles
    // does without it.
    constexpr UInt32 TrianglesWithoutTable = 1000;
    FrustumLanes const lanes(planes);
    OutsideTable table(lanes);
    TriangleCursor it(geometry);
    for(; !it.atEnd(); it.next())
    {
        if(it.getIndex() == TrianglesWithoutTable)
            table.fill(it.getView().positions);
        FrustumLanes::Grade const grade = table.grade(it);
        if(grade == FrustumLanes::Grade::Outside)
            continue;
        Pnt3f const corners[3] = {it.getPosition(0), it.getPosition(1), it.getPosition(2)};
        if(!visit(it, corners, grade))
            break;
    }
    return it.getIndex();
}
} // namespace

Extremes find_triangles(Geometry const &geometry, Plane const *planes, Plane const &plane)
{
    TriangleExtremes extremes(plane);
    ClippedTriangle clipped;
    visit_triangles(geometry, planes,
                    [&](TriangleCursor const &it, Pnt3f const *corners, FrustumLanes::Grade grade)
                    {
                        if(grade == FrustumLanes::Grade::Contained)
                        {
                            extremes.addContained(it, corners);
                            return true;
                        }
                        clip_triangle_at_frustum(corners, planes, clipped);
                        extremes.addClipped(it, corners, clipped);
                        return true;
                    });
    return extremes.finish(geometry);
}

bool has_triangle(Geometry const &geometry, Plane const *planes, UInt32 &tested)
{
    bool found = false;
    ClippedTriangle clipped;
    tested +=
        visit_triangles(geometry, planes,
                        [&](TriangleCursor const &, Pnt3f const *corners, FrustumLanes::Grade grade)
                        {
                            if(grade == FrustumLanes::Grade::Crossing)
                                clip_triangle_at_frustum(corners, planes, clipped);
                            found = grade == FrustumLanes::Grade::Contained || !clipped.empty();
                            return !found;
                        });
    return found;
}

Extremes find_lines(Geometry const &geometry, Plane const *planes, Plane const &plane)
{
    PlainExtremes extremes(plane);
    for(PartCursor<LineRule> it(geometry); !it.atEnd(); it.next())
    {
        Pnt3f ends[2] = {it.getPosition(0), it.getPosition(1)};
        if(!SelectionClipping::coarse_intersect(ends, 2, planes, 6) ||
           !SelectionClipping::line_intersect(ends, planes, 6))
            continue;
        for(int i = 0; i < 2; ++i)
            extremes.offer(ends[i], it.getIndex(), it.getVertex(i));
    }
    return extremes.finish(geometry);
}

Extremes find_points(Geometry const &geometry, Plane const *planes, Plane const &plane)
{
    PlainExtremes extremes(plane);
    for(PartCursor<PointRule> it(geometry); !it.atEnd(); it.next())
    {
        Pnt3f const point = it.getPosition(0);
        if(SelectionClipping::containement(&point, 1, planes, 6))
            extremes.offer(point, it.getPrimitive(), it.getFirstVertex());
    }
    return extremes.finish(geometry);
}
} // namespace OSG::SelectionSearch::Plain
