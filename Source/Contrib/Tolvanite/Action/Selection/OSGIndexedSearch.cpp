#include "OSGIndexedSearch.h"

#include <algorithm>
#include <cmath>

#include "OSGBoxWalk.h"
#include "OSGFrustumLanes.h"
#include "OSGIndexedExtremes.h"
#include "OSGSearchRecords.h"
#include "OSGSelectionClipping.h"

namespace OSG::SelectionSearch::Indexed
{
using SelectionClipping::ClippedTriangle;
using Grade = FrustumLanes::Grade;

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
constexpr UInt32 AllPlanes = 0x3F;
// In the state of a primitive that stands in no box, whose distances have no bounds.
constexpr UInt32 Untamed = 0x40;

/// What a search knows of its volume and its geometry.
template <class Rule>
struct Ground
{
    Ground(PrimitiveIndex const &searched, Geometry const &geometry, Plane const *sixPlanes,
           Plane const &plane)
        : index(searched)
        , planes(sixPlanes)
        , reference(plane)
        , lanes(sixPlanes)
        , reader(searched, geometry)
    {
        for(UInt32 k = 0; k < 6; ++k)
            boxPlanes.set(k, planes[k]);
        boxPlanes.set(6, plane);
    }

    /// Calls `visit` with each primitive that stands in no box, until it is false.
    template <class Visit>
    void visitUntamed(Visit visit)
    {
        for(UInt32 place = index.untamedBegin(); place < index.size(); ++place)
            if(!visit(index.primitiveAt(place), AllPlanes | Untamed))
                return;
    }
    /// Calls `visit(primitive, state)` with those of a block until it is false.
    template <class Visit>
    bool visitBlock(UInt32 block, UInt32 state, Visit visit)
    {
        UInt32 const begin = block * PrimitiveIndex::BlockSize;
        UInt32 const end = begin + index.blockSize(block);
        tested += end - begin;
        for(UInt32 place = begin; place < end; ++place)
            if(!visit(index.primitiveAt(place), state))
                return false;
        return true;
    }
    template <class Boxes, class Visit>
    void walk(Boxes &boxes, Visit visit)
    {
        tested += 4 * walk_boxes(index, AllPlanes, boxes,
                                 [&](UInt32 block, UInt32 state)
                                 { return visitBlock(block, state, visit); });
    }

    PrimitiveIndex const &index;
    Plane const *planes;
    Plane const &reference;
    FrustumLanes lanes;
    BoxPlanes boxPlanes;
    PartReader<Rule> reader;
    UInt32 tested = 0;
};

/// The planes that box `child` is not wholly inside of, as bits.
UInt32 crossed_planes(BoxGrades const &grades, UInt32 child)
{
    UInt32 state = 0;
    for(UInt32 k = 0; k < 6; ++k)
        state |= (grades.crossing[k] >> child & 1u) << k;
    return state;
}

/// What rounding may do to distances from a plane. A clip computes each coordinate as a + (b - a) t
/// with t from 0 to 1. Its error is below 6 units in the last place of the largest coordinate; six
/// clips and the sum of a distance stay below 64.
template <class Rule>
Real32 rounding_margin(Ground<Rule> const &ground, Plane const &plane)
{
    constexpr Real32 Units = 64 * 0x1p-23f;
    constexpr Real32 Smallest = 1e-36f; // above all that is lost where numbers are denormal
    if(ground.index.levelCount() == 0)
        return 0.f;
    BoxNode const &root = ground.index.level(ground.index.levelCount() - 1)[0];
    Real32 sum = std::abs(plane.getDistanceFromOrigin());
    for(UInt32 axis = 0; axis < 3; ++axis)
    {
        Real32 largest = 0.f;
        for(UInt32 child = 0; child < BoxNode::Width; ++child)
            largest = std::max(largest, std::max(std::abs(root.bound[axis][child]),
                                                 std::abs(root.bound[axis + 3][child])));
        sum += std::abs(plane.getNormal()[axis]) * largest;
    }
    return sum * Units + Smallest;
}

/// What widens the distances of boxes, for primitives that are clipped.
struct Margins
{
    Real32 contained; ///< where the box lies wholly inside
    Real32 crossing;  ///< where it does not; infinite where corners may lie anywhere
};

constexpr Real32 Infinite = std::numeric_limits<Real32>::infinity();

/// Chooses boxes that may hold a nearer (farther) corner than `best`, the nearest first.
template <class Best>
class ExtremeBoxes
{
  public:
    /// `other` is the key of a further place at which crossing primitives may have a corner.
    ExtremeBoxes(BoxPlanes const &planes, Best const &best, Margins const &margins, Real32 other)
        : _planes(planes)
        , _best(best)
        , _margins(margins)
        , _other(other)
    {
    }

    void test(BoxNode const &node, UInt32 state, BoxChoices &choices) const
    {
        BoxGrades grades;
        grade_boxes(node, _planes, state, grades);
        choices.wanted &= ~grades.outside;
        for(UInt32 rest = choices.wanted; rest != 0; rest &= rest - 1)
        {
            UInt32 const child = static_cast<UInt32>(__builtin_ctz(rest));
            UInt32 const crossed = crossed_planes(grades, child);
            Real32 const key = Best::key(grades.nearest[child], grades.farthest[child]);
            choices.state[child] = crossed;
            choices.key[child] =
                crossed == 0 ? key - _margins.contained : std::min(key, _other) - _margins.crossing;
            if(!wants(choices.key[child], node.last[child]))
                choices.wanted &= ~(1u << child);
        }
    }
    bool wants(Real32 key, UInt32 last) const { return _best.wants(key, last); }

  private:
    BoxPlanes const &_planes;
    Best const &_best;
    Margins _margins;
    Real32 _other;
};

/// Chooses boxes that cross the volume's border, and so may hold a crossing triangle before
/// triangle `end` with a nearer corner than `best`.
class CrossingBoxes
{
  public:
    CrossingBoxes(BoxPlanes const &planes, NearBest const &best, Real32 margin, Real32 other,
                  UInt32 end)
        : _planes(planes)
        , _best(best)
        , _margin(margin)
        , _other(other)
        , _end(end)
    {
    }

    void test(BoxNode const &node, UInt32 state, BoxChoices &choices) const
    {
        BoxGrades grades;
        grade_boxes(node, _planes, state, grades);
        choices.wanted &= ~grades.outside;
        for(UInt32 rest = choices.wanted; rest != 0; rest &= rest - 1)
        {
            UInt32 const child = static_cast<UInt32>(__builtin_ctz(rest));
            choices.state[child] = crossed_planes(grades, child);
            choices.key[child] = std::min(grades.nearest[child], _other) - _margin;
            if(choices.state[child] == 0 || node.first[child] >= _end ||
               !wants(choices.key[child], node.last[child]))
                choices.wanted &= ~(1u << child);
        }
    }
    bool wants(Real32 key, UInt32 last) const { return _best.wants(key, last); }

  private:
    BoxPlanes const &_planes;
    NearBest const &_best;
    Real32 _margin;
    Real32 _other;
    UInt32 _end;
};

/// Chooses boxes that may hold a contained triangle before `first` with a corner nearer than
/// `limit`; those that begin with the first triangles first.
class FirstBoxes
{
  public:
    FirstBoxes(BoxPlanes const &planes, Real32 limit, UInt32 const &first)
        : _planes(planes)
        , _limit(limit)
        , _first(first)
    {
    }

    void test(BoxNode const &node, UInt32 state, BoxChoices &choices) const
    {
        BoxGrades grades;
        grade_boxes(node, _planes, state, grades);
        choices.wanted &= ~grades.outside;
        for(UInt32 rest = choices.wanted; rest != 0; rest &= rest - 1)
        {
            UInt32 const child = static_cast<UInt32>(__builtin_ctz(rest));
            choices.state[child] = crossed_planes(grades, child);
            choices.key[child] = static_cast<Real32>(node.first[child]);
            if(!(grades.nearest[child] < _limit) || node.first[child] >= _first)
                choices.wanted &= ~(1u << child);
        }
    }
    // The key is rounded, which keeps the order.
    bool wants(Real32 key, UInt32) const { return key <= static_cast<Real32>(_first); }

  private:
    BoxPlanes const &_planes;
    Real32 _limit;
    UInt32 const &_first;
};

// --- triangles ---

using TriangleGround = Ground<TriangleRule>;

/// Corners of clipped triangles stay between those of the triangle but for rounding, with one
/// exception. Where a corner lies on a plane, two edges may count as entering there; the place
/// where the boundary leaves is then not set, and the polygon is closed from the origin. So the
/// corners of such a triangle lie between its own and the origin.
class TriangleSearch
{
  public:
    explicit TriangleSearch(TriangleGround &ground)
        : _ground(ground)
        , _margin(rounding_margin(ground, ground.reference))
        , _origin(ground.reference.distance(Pnt3f()))
    {
        for(int k = 0; k < 6; ++k)
            _planeMargin = std::max(_planeMargin, rounding_margin(ground, ground.planes[k]));
    }

    Extremes find(Geometry const &geometry)
    {
        auto const visit = [this](UInt32 i, UInt32 state)
        {
            offer(i, state);
            return true;
        };
        _ground.visitUntamed(visit);
        walkFor(_near, visit);
        walkFor(_far, visit);
        Extremes result;
        complete(geometry, _near, result.near);
        complete(geometry, _far, result.far);
        if(_near.isFound() && _near.isContained())
            findNearPoint(result.near);
        return result;
    }

  private:
    template <class Best, class Visit>
    void walkFor(Best const &best, Visit visit)
    {
        ExtremeBoxes<Best> boxes(_ground.boxPlanes, best, {0.f, _margin},
                                 Best::key(_origin, _origin));
        _ground.walk(boxes, visit);
    }

    Grade grade(UInt32 state, Pnt3f const *corners) const
    {
        return state == 0 ? Grade::Contained : _ground.lanes.grade(corners);
    }

    void offer(UInt32 i, UInt32 state)
    {
        Pnt3f corners[3];
        _ground.reader.read(i, corners);
        Grade const found = grade(state, corners);
        if(found == Grade::Outside)
            return;
        Real32 distances[3];
        for(int v = 0; v < 3; ++v)
            distances[v] = _ground.reference.distance(corners[v]);
        if(found == Grade::Contained)
        {
            for(int v = 0; v < 3; ++v)
            {
                _near.offer(distances[v], i, corners[v], v);
                _far.offer(distances[v], i, corners[v], v);
            }
            return;
        }
        if((state & Untamed) == 0 && !mayImprove(_near, corners, distances, i) &&
           !mayImprove(_far, corners, distances, i))
            return;
        clip_triangle_at_frustum(corners, _ground.planes, _clipped);
        for(int c = 0; c < _clipped.size(); ++c)
        {
            Pnt3f const &point = _clipped[c].first;
            Real32 const distance = _ground.reference.distance(point);
            _near.offer(distance, i, point, NoCorner);
            _far.offer(distance, i, point, NoCorner);
        }
    }

    template <class Best>
    bool mayImprove(Best const &best, Pnt3f const *corners, Real32 const *distances, UInt32 i) const
    {
        for(int v = 0; v < 3; ++v)
            if(best.wants(Best::key(distances[v], distances[v]) - _margin, i))
                return true;
        return best.wants(Best::key(_origin, _origin) - _margin, i) &&
               !_ground.lanes.crossesOneClearly(corners, _planeMargin);
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
            offer(i, AllPlanes | Untamed);
            if(_near.isFound() && !_near.isContained())
                point = _near.getPoint();
        }
        _ground.tested += end;
        return point;
    }

    /// The nearest corner of the crossing triangles before `end`.
    NearBest findCrossing(UInt32 end)
    {
        NearBest best;
        auto const visit = [&](UInt32 i, UInt32 state)
        {
            if(i < end)
                offerCrossing(i, state, best);
            return true;
        };
        _ground.visitUntamed(visit);
        CrossingBoxes boxes(_ground.boxPlanes, best, _margin, _origin, end);
        _ground.walk(boxes, visit);
        return best;
    }

    void offerCrossing(UInt32 i, UInt32 state, NearBest &best)
    {
        Pnt3f corners[3];
        _ground.reader.read(i, corners);
        if(grade(state, corners) != Grade::Crossing)
            return;
        Real32 distances[3];
        for(int v = 0; v < 3; ++v)
            distances[v] = _ground.reference.distance(corners[v]);
        if((state & Untamed) == 0 && !mayImprove(best, corners, distances, i))
            return;
        clip_triangle_at_frustum(corners, _ground.planes, _clipped);
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
                if(isNearer(corners, limit) && grade(state, corners) == Grade::Contained)
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
    Real32 _margin;            // of distances from the reference plane
    Real32 _planeMargin = 0.f; // from any of the six
    Real32 _origin;            // distance of the origin
    NearBest _near;
    FarBest _far;
    ClippedTriangle _clipped;
};

/// Chooses all boxes that are not outside, those that cross few planes first. A contained one
/// decides.
class AnyBoxes
{
  public:
    explicit AnyBoxes(BoxPlanes const &planes)
        : _planes(planes)
    {
    }

    void test(BoxNode const &node, UInt32 state, BoxChoices &choices)
    {
        BoxGrades grades;
        grade_boxes(node, _planes, state, grades);
        choices.wanted &= ~grades.outside;
        for(UInt32 rest = choices.wanted; rest != 0; rest &= rest - 1)
        {
            UInt32 const child = static_cast<UInt32>(__builtin_ctz(rest));
            UInt32 const crossed = crossed_planes(grades, child);
            choices.state[child] = crossed;
            choices.key[child] = static_cast<Real32>(__builtin_popcount(crossed));
            isFound = isFound || crossed == 0;
        }
    }
    bool wants(Real32, UInt32) const { return !isFound; }

    bool isFound = false;

  private:
    BoxPlanes const &_planes;
};
} // namespace

Extremes find_triangles(PrimitiveIndex const &index, Geometry const &geometry, Plane const *planes,
                        Plane const &plane, UInt32 &tested)
{
    TriangleGround ground(index, geometry, planes, plane);
    Extremes const found = TriangleSearch(ground).find(geometry);
    tested += ground.tested;
    return found;
}

bool has_triangle(PrimitiveIndex const &index, Geometry const &geometry, Plane const *planes,
                  UInt32 &tested)
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
    tested += ground.tested;
    return boxes.isFound;
}

// --- lines and points ---

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
                    Plane const &plane, UInt32 &tested)
{
    Ground<LineRule> ground(index, geometry, planes, plane);
    NearBest near;
    FarBest far;
    // Nearly parallel to a plane, a clipped end may lie anywhere on the line, as the parameter is
    // rounded. Ends of a line that lies wholly inside stay between the two.
    walk_both(ground, near, far, {rounding_margin(ground, plane), Infinite},
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
    tested += ground.tested;
    return result;
}

Extremes find_points(PrimitiveIndex const &index, Geometry const &geometry, Plane const *planes,
                     Plane const &plane, UInt32 &tested)
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
    tested += ground.tested;
    return result;
}
} // namespace OSG::SelectionSearch::Indexed
