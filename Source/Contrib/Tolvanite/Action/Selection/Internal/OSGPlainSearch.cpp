#include "OSGPlainSearch.h"

#include <algorithm>
#include <memory>

#include "OSGFrustumLanes.h"
#include "OSGSearchExtremes.h"
#include "OSGSelectionClipping.h"

namespace OSG::SelectionSearch::Plain
{
using SelectionClipping::ClippedTriangle;

namespace
{
using TriangleCursor = PartCursor<TriangleRule>;

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
                        for(int i = 0; i < clipped.size(); ++i)
                            extremes.addClipped(it, corners, clipped[i].first);
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
