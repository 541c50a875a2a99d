#include "OSGIndexedSearch.h"

#include <algorithm>
#include <cmath>

#include "OSGBoxWalk.h"
#include "OSGFrustumLanes.h"
#include "OSGIndexedExtremes.h"
#include "OSGSearchRecords.h"
#include "OSGSelectionClipping.h"
#include "OSGTriangleBlock.h"

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
        {
            boxPlanes.set(k, planes[k], margin(planes[k]));
            if(!(planes[k].distance(Pnt3f()) > boxPlanes.planes[k].margin))
                planesNearOrigin |= 1u << k;
        }
        boxPlanes.set(6, plane);
    }

    /// What rounding may do to distances from a plane. A clip computes each coordinate as
    /// a + (b - a) t with t from 0 to 1. Its error is below 6 units in the last place of the
    /// largest coordinate; six clips and the sum of a distance stay below 64.
    Real32 margin(Plane const &plane) const
    {
        constexpr Real32 Units = 64 * 0x1p-23f;
        constexpr Real32 Smallest = 1e-36f; // above all that is lost where numbers are denormal
        Vec3f const &normal = plane.getNormal();
        Pnt3f const &largest = index.getLargest();
        Real32 const sum = std::abs(normal[0]) * largest[0] + std::abs(normal[1]) * largest[1] +
                           std::abs(normal[2]) * largest[2] +
                           std::abs(plane.getDistanceFromOrigin());
        return sum * Units + Smallest;
    }

    /// Calls `visit` with each primitive that stands in no box, until it is false.
    template <class Visit>
    void visitUntamed(Visit visit)
    {
        for(UInt32 place = index.untamedBegin(); place < index.size(); ++place)
            if(!visit(index.primitiveAt(place), AllPlanes))
                return;
    }
    /// Calls `visit(primitive, state)` with those of a block until it is false.
    template <class Visit>
    bool visitBlock(UInt32 block, UInt32 state, Visit visit)
    {
        UInt32 const begin = block * PrimitiveIndex::BlockSize;
        UInt32 const end = begin + index.blockSize(block);
        for(UInt32 place = begin; place < end; ++place)
            if(!visit(index.primitiveAt(place), state))
                return false;
        return true;
    }
    template <class Boxes, class Visit>
    void walk(Boxes &boxes, Visit visit)
    {
        walkBlocks(boxes,
                   [&](UInt32 block, UInt32 state) { return visitBlock(block, state, visit); });
    }
    template <class Boxes, class Visit>
    void walkBlocks(Boxes &boxes, Visit visit)
    {
        walk_boxes(index, AllPlanes, boxes, visit);
    }

    PrimitiveIndex const &index;
    Plane const *planes;
    Plane const &reference;
    FrustumLanes lanes;
    BoxPlanes boxPlanes;
    PartReader<Rule> reader;
    UInt32 planesNearOrigin = 0; ///< those that the origin is not clearly inside of, as bits
};

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

    void test(BoxNode const &node, UInt32 state, BoxChoices &choices)
    {
        BoxGrades grades;
        grade_boxes(node, _planes, state, grades);
        choices.wanted &= ~grades.outside;
        for(UInt32 rest = choices.wanted; rest != 0; rest &= rest - 1)
        {
            UInt32 const child = static_cast<UInt32>(__builtin_ctz(rest));
            UInt32 const crossed = grades.crossed[child];
            Real32 const key = Best::key(grades.nearest[child], grades.farthest[child]);
            choices.state[child] = crossed;
            choices.key[child] =
                crossed == 0 ? key - _margins.contained : std::min(key, _other) - _margins.crossing;
            if(!wants(choices.key[child], node.last[child]))
                choices.wanted &= ~(1u << child);
        }
    }
    bool wants(Real32 key, UInt32 last)
    {
        bool const isWanted = _best.wants(key, last);
        _hasRefused = _hasRefused || !isWanted;
        return isWanted;
    }
    /// Whether it has turned down a box that was not outside.
    bool hasRefused() const { return _hasRefused; }

  private:
    BoxPlanes const &_planes;
    Best const &_best;
    Margins _margins;
    Real32 _other;
    bool _hasRefused = false;
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
            choices.state[child] = grades.crossed[child];
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
            choices.state[child] = grades.crossed[child];
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

/// Reads and grades the triangles of one block.
class BlockReader
{
  public:
    BlockReader(TriangleGround &ground, UInt32 block, UInt32 state)
        : _begin(block * PrimitiveIndex::BlockSize)
        , _size(ground.index.blockSize(block))
        , _index(ground.index)
    {
        for(UInt32 t = 0; t < _size; ++t)
        {
            Pnt3f corners[3];
            ground.reader.read(primitive(t), corners);
            for(UInt32 c = 0; c < 3; ++c)
                _block.set(t, c, corners[c]);
        }
        grade_block(_block, ground.boxPlanes, state, grades);
    }

    UInt32 primitive(UInt32 t) const { return _index.primitiveAt(_begin + t); }
    /// The triangles that are not outside, as bits.
    UInt32 found() const { return ~grades.outside & ((1u << _size) - 1); }
    bool crosses(UInt32 t) const { return (grades.crossing >> t & 1u) != 0; }
    Pnt3f corner(UInt32 t, UInt32 c) const { return _block.corner(t, c); }
    Real32 distance(UInt32 t, UInt32 c) const { return grades.distance[4 * c + t]; }
    /// Clips a triangle at the planes that change it. The others are those that it is clearly
    /// inside of, and the origin too where a corner may come to lie there.
    void clip(UInt32 t, TriangleGround const &ground, ClippedTriangle &clipped) const
    {
        Pnt3f const corners[3] = {corner(t, 0), corner(t, 1), corner(t, 2)};
        UInt32 const others = crossesOneClearly(t) ? 0 : ground.planesNearOrigin;
        clip_triangle_at_frustum(corners, ground.planes, clipped, unclear(t) | others);
    }
    /// Whether the triangle crosses one plane, and no corner comes near that one or any other. Then
    /// no corner of the clipped triangle lies at the origin.
    bool crossesOneClearly(UInt32 t) const
    {
        UInt32 const planes = unclear(t);
        return (grades.touching >> t & 1u) == 0 && (planes & (planes - 1)) == 0;
    }

    BlockGrades grades;

  private:
    UInt32 unclear(UInt32 t) const
    {
        UInt32 planes = 0;
        for(UInt32 k = 0; k < 6; ++k)
            planes |= (grades.unclear[k] >> t & 1u) << k;
        return planes;
    }

    UInt32 _begin;
    UInt32 _size;
    PrimitiveIndex const &_index;
    TriangleBlock _block;
};

/// Remembers some hundred blocks.
class SeenBlocks
{
  public:
    void add(UInt32 block) { _blocks[block % Size] = block + 1; }
    bool has(UInt32 block) const { return _blocks[block % Size] == block + 1; }

  private:
    static constexpr UInt32 Size = 256;
    UInt32 _blocks[Size] = {};
};

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
            UInt32 const crossed = grades.crossed[child];
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
