#include "OSGSelectionSearch.h"

#include <algorithm>
#include <memory>

#include "OSGFrustumLanes.h"
#include "OSGGeometryIterators.h"
#include "OSGSelectionClipping.h"

namespace OSG::SelectionSearch
{
using SelectionClipping::ClippedTriangle;

namespace
{
// A normal whose coordinates are all below this is missing; the normal of the face replaces it.
constexpr Real32 ZeroEpsilon = 1e-6f;

bool passes_near(Extreme const &near, Real32 distance) { return near.distance >= distance; }
bool passes_far(Extreme const &far, Real32 distance) { return distance >= far.distance; }

/// Takes the corner if it is the nearest or the farthest so far. `normal()` is called only then,
/// because most corners are neither. An equal distance counts, so the last of several corners
/// stays.
template <class Normal>
void offer(Extremes &extremes, Real32 distance, Int32 index, Pnt3f const &point, Normal normal)
{
    if(passes_near(extremes.near, distance))
        extremes.near = {distance, index, point, normal(), true};
    if(passes_far(extremes.far, distance))
        extremes.far = {distance, index, point, normal(), true};
}

/// The nearest and the farthest corner of many triangles, and the triangles that they belong to.
/// The normal of a face is computed once at the end instead of for each new extreme.
class TriangleExtremes
{
  public:
    explicit TriangleExtremes(Plane const &plane)
        : _plane(plane)
    {
    }

    void addContained(TriangleIterator const &it, Pnt3f const *corners)
    {
        for(int v = 0; v < 3; ++v)
        {
            // A triangle that lies wholly inside keeps the near point of the last crossing
            // triangle.
            Pnt3f const nearPoint = _extremes.near.point;
            if(add(it, corners, corners[v], [&] { return it.getNormal(v); }))
            {
                _extremes.near.point = nearPoint;
                _extremes.near.hasPoint = false;
            }
        }
    }

    void addClipped(TriangleIterator const &it, Pnt3f const *corners,
                    ClippedTriangle const &clipped)
    {
        for(int i = 0; i < clipped.size(); ++i)
            add(it, corners, clipped[i].first, [] { return Vec3f(); });
    }

    /// The result. Missing normals are replaced by those of the faces.
    Extremes finish()
    {
        complete(_extremes.near, _nearTriangle);
        complete(_extremes.far, _farTriangle);
        return _extremes;
    }

  private:
    /// Offers a corner of the triangle or of its clipped part. True where it becomes the near
    /// corner.
    template <class Normal>
    bool add(TriangleIterator const &it, Pnt3f const *corners, Pnt3f const &point, Normal normal)
    {
        Real32 const distance = _plane.distance(point);
        bool const isNear = passes_near(_extremes.near, distance);
        bool const isFar = passes_far(_extremes.far, distance);
        if(isNear || isFar)
            offer(_extremes, distance, it.getIndex(), point, normal);
        if(isNear)
            std::copy_n(corners, 3, _nearTriangle);
        if(isFar)
            std::copy_n(corners, 3, _farTriangle);
        return isNear;
    }

    static void complete(Extreme &extreme, Pnt3f const *triangle)
    {
        if(!extreme.normal.equals(Vec3f(), ZeroEpsilon))
            return;
        extreme.normal = (triangle[1] - triangle[0]).cross(triangle[2] - triangle[0]);
        extreme.normal.normalize();
        if(!(extreme.normal == extreme.normal)) // a NaN corner, or an overflow
            extreme.normal = Vec3f();
    }

    Plane const &_plane;
    Extremes _extremes;
    Pnt3f _nearTriangle[3];
    Pnt3f _farTriangle[3];
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

    FrustumLanes::Grade grade(TriangleIterator const &it) const
    {
        if(_outside != nullptr)
            return FrustumLanes::grade(_outside[it.getPositionIndex(0)],
                                       _outside[it.getPositionIndex(1)],
                                       _outside[it.getPositionIndex(2)]);
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
template <class Visit>
void visit_triangles(Geometry const &geometry, Plane const *planes, Visit visit)
{
    // The table costs time for all positions, so a search that ends at one of the first triangles
    // does without it.
    constexpr Int32 TrianglesWithoutTable = 1000;
    FrustumLanes const lanes(planes);
    OutsideTable table(lanes);
    TriangleIterator const end = geometry.endTriangles();
    for(TriangleIterator it = geometry.beginTriangles(); it != end; ++it)
    {
        if(it.getIndex() == TrianglesWithoutTable)
            table.fill(GeometryView(geometry).positions);
        FrustumLanes::Grade const grade = table.grade(it);
        if(grade == FrustumLanes::Grade::Outside)
            continue;
        Pnt3f const corners[3] = {it.getPosition(0), it.getPosition(1), it.getPosition(2)};
        if(!visit(it, corners, grade))
            return;
    }
}
} // namespace

Extremes find_triangles(Geometry const &geometry, Plane const *planes, Plane const &plane)
{
    TriangleExtremes extremes(plane);
    ClippedTriangle clipped;
    visit_triangles(geometry, planes,
                    [&](TriangleIterator const &it, Pnt3f const *corners, FrustumLanes::Grade grade)
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
    return extremes.finish();
}

bool has_triangle(Geometry const &geometry, Plane const *planes)
{
    bool found = false;
    ClippedTriangle clipped;
    visit_triangles(geometry, planes,
                    [&](TriangleIterator const &, Pnt3f const *corners, FrustumLanes::Grade grade)
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
    Extremes extremes;
    LineIterator const end = geometry.endLines();
    for(LineIterator it = geometry.beginLines(); it != end; ++it)
    {
        Pnt3f ends[2] = {it.getPosition(0), it.getPosition(1)};
        if(!SelectionClipping::coarse_intersect(ends, 2, planes, 6) ||
           !SelectionClipping::line_intersect(ends, planes, 6))
            continue;
        for(int i = 0; i < 2; ++i)
            offer(extremes, plane.distance(ends[i]), it.getIndex(), ends[i],
                  [&] { return it.getNormal(i); });
    }
    return extremes;
}

Extremes find_points(Geometry const &geometry, Plane const *planes, Plane const &plane)
{
    Extremes extremes;
    PrimitiveIterator const end = geometry.endPrimitives();
    for(PrimitiveIterator it = geometry.beginPrimitives(); it != end; ++it)
    {
        if(it.getType() != PointsPrimitive)
            continue;
        // A primitive may claim more points than the arrays have.
        UInt32 const available = it.getAvailable();
        bool complete = available == it.getLength();
        for(UInt32 i = 0; i < available; ++i)
        {
            Int32 const vertex = static_cast<Int32>(i);
            if(!it.hasPosition(vertex))
            {
                complete = false;
                continue;
            }
            Pnt3f const point = it.getPosition(vertex);
            if(SelectionClipping::containement(&point, 1, planes, 6))
                offer(extremes, plane.distance(point), static_cast<Int32>(it.getIndex()), point,
                      [&] { return it.getNormal(0); });
        }
        if(!complete)
            geometry.reportOutOfRange();
    }
    return extremes;
}
} // namespace OSG::SelectionSearch
