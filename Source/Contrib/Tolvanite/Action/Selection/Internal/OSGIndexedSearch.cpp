#include "OSGIndexedSearch.h"

#include <algorithm>
#include <cmath>

#include "OSGSearchBoxes.h"
#include "OSGSearchGround.h"
#include "OSGSearchRecords.h"
#include "OSGSelectionClipping.h"

namespace OSG::SelectionSearch::Indexed
{
bool can_search(Plane const *planes, Plane const &plane)
{
    constexpr Real32 LongestNormal = 2.f; // of any component
    constexpr Real32 LargestDistance = 1e37f;
    auto const isTame = [](Plane const &p)
    {
        Vec3f const &n = p.getNormal();
        return std::abs(n[0]) <= LongestNormal && std::abs(n[1]) <= LongestNormal &&
               std::abs(n[2]) <= LongestNormal &&
               std::abs(p.getDistanceFromOrigin()) <= LargestDistance;
    };
    return isTame(plane) && std::all_of(planes, planes + 6, isTame);
}

namespace
{
/// Walks for the nearest, then for the farthest. `visit(primitive, state)` offers corners.
template <class Rule, class Visit>
void walk_both(Ground<Rule> &ground, NearBest const &near, FarBest const &far,
               Margins const &margins, Visit visit)
{
    ground.visitUntamed(visit);
    ExtremeBoxes<NearBest> nearBoxes(ground.boxPlanes, near, margins, Infinite);
    ground.walk(nearBoxes, visit);
    ExtremeBoxes<FarBest> farBoxes(ground.boxPlanes, far, margins, Infinite);
    ground.walk(farBoxes, visit);
}

template <class Best>
void complete_line(Ground<LineRule> &ground, Geometry const &geometry, Best const &best,
                   Extreme &extreme)
{
    if(!best.isFound())
        return;
    UInt32 const i = best.getPrimitive();
    Vec3f const normal = normal_at(geometry, ground.reader.vertexOf(i, best.getCorner()));
    extreme = {best.getDistance(), static_cast<Int32>(i), best.getPoint(), normal, true};
}

template <class Best>
void complete_point(Ground<PointRule> &ground, Geometry const &geometry, Best const &best,
                    Extreme &extreme)
{
    if(!best.isFound())
        return;
    UInt32 const i = best.getPrimitive();
    extreme = {best.getDistance(), static_cast<Int32>(ground.reader.primitiveOf(i)),
               best.getPoint(), normal_at(geometry, ground.reader.firstVertexOf(i)), true};
}
} // namespace

Extremes find_lines(PrimitiveIndex const &index, Geometry const &geometry, Plane const *planes,
                    Plane const &plane)
{
    Ground<LineRule> ground(index, geometry, planes, plane);
    NearBest near;
    FarBest far;
    // Nearly parallel to a plane, a clipped end may lie anywhere on the line, as the parameter is
    // rounded. Ends of a line that lies wholly inside stay between the two.
    walk_both(ground, near, far, {ground.margin(plane), Infinite},
              [&](UInt32 i, UInt32)
              {
                  Pnt3f ends[2];
                  ground.reader.read(i, ends);
                  if(!SelectionClipping::coarse_intersect(ends, 2, planes, 6) ||
                     !SelectionClipping::line_intersect(ends, planes, 6))
                      return true;
                  for(int c = 0; c < 2; ++c)
                  {
                      Real32 const distance = plane.distance(ends[c]);
                      near.offer(distance, i, ends[c], c);
                      far.offer(distance, i, ends[c], c);
                  }
                  return true;
              });
    Extremes result;
    complete_line(ground, geometry, near, result.near);
    complete_line(ground, geometry, far, result.far);
    return result;
}

Extremes find_points(PrimitiveIndex const &index, Geometry const &geometry, Plane const *planes,
                     Plane const &plane)
{
    Ground<PointRule> ground(index, geometry, planes, plane);
    NearBest near;
    FarBest far;
    walk_both(ground, near, far, {0.f, 0.f},
              [&](UInt32 i, UInt32)
              {
                  Pnt3f point[1];
                  ground.reader.read(i, point);
                  if(ground.lanes.outside(point[0]) == 0)
                  {
                      Real32 const distance = plane.distance(point[0]);
                      near.offer(distance, i, point[0], 0);
                      far.offer(distance, i, point[0], 0);
                  }
                  return true;
              });
    Extremes result;
    complete_point(ground, geometry, near, result.near);
    complete_point(ground, geometry, far, result.far);
    return result;
}
} // namespace OSG::SelectionSearch::Indexed
