#include "OSGGeometryRay.h"

#include <algorithm>
#include <cmath>

#include "OSGBoxRay.h"
#include "OSGBoxWalk.h"
#include "OSGGeometryIterators.h"

namespace OSG
{
namespace
{
Vec3d to_double(Vec3f const &v) { return Vec3d(v[0], v[1], v[2]); }
Vec3d between(Pnt3f const &from, Pnt3f const &to)
{
    return Vec3d(Real64(to[0]) - from[0], Real64(to[1]) - from[1], Real64(to[2]) - from[2]);
}

/// How far beside a triangle's box a hit may lie, in distances from the ray's position to the far
/// corner of the box. Rounding stays below that where the sine of the angle is above 1e-9.
constexpr Real64 HitRoom = 1e-6;

Vec3f face_normal(Vec3d const &edge1, Vec3d const &edge2)
{
    Vec3d const across = edge1.cross(edge2);
    Vec3d const unit = across * (1 / across.length());
    return Vec3f(unit[0], unit[1], unit[2]);
}

/// A ray on its way through the triangles of a geometry, in any order. The nearest hit stays, of
/// equal distances that with the smallest number.
class RayCast
{
  public:
    RayCast(Line const &ray, Real64 reach)
        : _position(ray.getPosition())
        , _direction(to_double(ray.getDirection()))
        , _best(reach)
    {
    }

    void test(Pnt3f const (&corners)[3], UInt32 triangle);
    /// Hits beyond this distance are of no use.
    Real64 getBest() const { return _best; }
    RayHit result() const;

  private:
    bool isInBox(Real64 distance, Pnt3f const (&corners)[3]) const;

    Pnt3f _position;
    Vec3d _direction;
    Real64 _best;
    Int32 _triangle = -1;
    Vec3d _edge1;
    Vec3d _edge2;
};

// Quotients are compared with bounds. Products with the determinant tell most of the time that a
// quotient lies outside, with a margin that covers all rounding, and no division is needed. What
// passes is divided and compared.
void RayCast::test(Pnt3f const (&corners)[3], UInt32 triangle)
{
    constexpr Real64 FlatSine = 1e-12; // of the angle between ray and triangle
    constexpr Real64 Above = 1 + 0x1p-48;
    constexpr Real64 Below = -1e-300;
    Vec3d const edge1 = between(corners[0], corners[1]);
    Vec3d const edge2 = between(corners[0], corners[2]);
    Vec3d const p = _direction.cross(edge2);
    Real64 const determinant = edge1.dot(p);
    Real64 const size = std::abs(determinant);
    Real64 const sign = determinant < 0 ? -1 : 1;
    Vec3d const s = between(corners[0], _position);
    Real64 const uSize = s.dot(p);
    if(uSize * sign < Below * size || uSize * sign > Above * size)
        return;
    Vec3d const q = s.cross(edge1);
    Real64 const vSize = _direction.dot(q);
    if(vSize * sign < Below * size || (uSize + vSize) * sign > Above * size)
        return;
    Real64 const way = edge2.dot(q);
    if(way * sign < Below * size || way * sign > _best * size * Above)
        return;

    Real64 const flat = FlatSine * FlatSine * edge1.squareLength() * edge2.squareLength();
    if(!(determinant * determinant > flat) || !std::isfinite(determinant))
        return;
    Real64 const u = uSize / determinant;
    Real64 const v = vSize / determinant;
    Real64 const distance = way / determinant;
    if(!(u >= 0 && u <= 1 && v >= 0 && u + v <= 1 && distance >= 0))
        return;
    bool const isSooner = _triangle < 0 || static_cast<Int32>(triangle) < _triangle;
    if(!(distance < _best || (distance == _best && isSooner)) || !isInBox(distance, corners))
        return;
    _best = distance;
    _triangle = static_cast<Int32>(triangle);
    _edge1 = edge1;
    _edge2 = edge2;
}

bool RayCast::isInBox(Real64 distance, Pnt3f const (&corners)[3]) const
{
    Vec3d low = between(_position, corners[0]);
    Vec3d high = low;
    for(Pnt3f const &corner : corners)
    {
        Vec3d const to = between(_position, corner);
        for(int axis = 0; axis < 3; ++axis)
        {
            low[axis] = std::min(low[axis], to[axis]);
            high[axis] = std::max(high[axis], to[axis]);
        }
    }
    Real64 far = 0;
    for(int axis = 0; axis < 3; ++axis)
        far = std::max({far, -low[axis], high[axis]});
    Real64 const room = HitRoom * far;
    bool isInside = true;
    for(int axis = 0; axis < 3; ++axis)
    {
        Real64 const at = _direction[axis] * distance;
        isInside = isInside && at >= low[axis] - room && at <= high[axis] + room;
    }
    return isInside;
}

RayHit RayCast::result() const
{
    if(_triangle < 0)
        return {_best, -1, Vec3f()};
    return {_best, _triangle, face_normal(_edge1, _edge2)};
}

// --- by an index ---

constexpr Real32 LargestNumber = 1e18f;

/// The largest distance along an axis from the ray's position to a corner of the boxes of the root.
Real32 distance_to_far_end(PrimitiveIndex const &index, Pnt3f const &position)
{
    Real32 far = 0.f;
    UInt32 const root = index.levelCount() - 1;
    BoxNode const &node = index.level(root)[0];
    for(UInt32 rest = index.childrenOf(root, 0); rest != 0; rest &= rest - 1)
    {
        auto const child = static_cast<UInt32>(__builtin_ctz(rest));
        for(UInt32 row = 0; row < 6; ++row)
            far = std::max(far, std::abs(node.bound[row][child] - position[row % 3]));
    }
    return far;
}

/// Chooses the boxes that the ray enters before its best hit. A hit lies in the box of its triangle
/// to within HitRoom; the boxes grow by twice as much, which leaves half of it for rounding.
class RayBoxes
{
  public:
    RayBoxes(PrimitiveIndex const &index, Line const &ray, RayCast const &cast)
        : _cast(cast)
    {
        constexpr auto Growth = static_cast<Real32>(2 * HitRoom);
        constexpr Real32 Smallest = 1e-36f; // above all that is lost where numbers are denormal
        _ray.set(ray, Growth * distance_to_far_end(index, ray.getPosition()) + Smallest);
    }

    void test(BoxNode const &node, UInt32, BoxChoices &choices) const
    {
        BoxRayTimes times;
        cast_at_boxes(node, _ray, limit(), times);
        choices.wanted &= ~times.missed;
        std::copy_n(times.enter, BoxNode::Width, choices.key);
        std::fill_n(choices.state, BoxNode::Width, 0u);
    }
    bool wants(Real32 key, UInt32) const { return key <= _cast.getBest(); }

  private:
    /// Not less than the best distance.
    Real32 limit() const
    {
        constexpr Real32 Up = 1.f + 0x1p-22f;
        constexpr Real32 Smallest = 1e-37f;
        return static_cast<Real32>(_cast.getBest()) * Up + Smallest;
    }

    BoxRay _ray;
    RayCast const &_cast;
};
} // namespace

RayHit nearest_triangle(Geometry const &geometry, Line const &ray, Real64 reach)
{
    RayCast cast(ray, reach);
    for(PartCursor<TriangleRule> it(geometry); !it.atEnd(); it.next())
        cast.test({it.getPosition(0), it.getPosition(1), it.getPosition(2)}, it.getIndex());
    return cast.result();
}

bool can_cast(PrimitiveIndex const &index, Line const &ray)
{
    bool isTame = true;
    for(int axis = 0; axis < 3; ++axis)
        isTame = isTame && std::abs(ray.getPosition()[axis]) <= LargestNumber &&
                 index.getLargest()[axis] <= LargestNumber;
    Real32 const square = ray.getDirection().squareLength();
    return isTame && square > 0.25f && square < 4.f;
}

RayHit nearest_triangle_by_index(PrimitiveIndex const &index, Geometry const &geometry,
                                 Line const &ray, Real64 reach)
{
    RayCast cast(ray, reach);
    PartReader<TriangleRule> reader(index, geometry);
    auto const test = [&](UInt32 triangle)
    {
        Pnt3f corners[3];
        reader.read(triangle, corners);
        cast.test(corners, triangle);
        return true;
    };
    visit_untamed(index, test);
    if(index.levelCount() == 0)
        return cast.result();
    RayBoxes boxes(index, ray, cast);
    walk_boxes(index, 0, boxes,
               [&](UInt32 block, UInt32) { return visit_block(index, block, test); });
    return cast.result();
}
} // namespace OSG
