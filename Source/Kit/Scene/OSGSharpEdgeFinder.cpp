#include "OSGSharpEdgeFinder.h"

#include <bit>
#include <cmath>
#include <numbers>
#include <utility>

#include "OSGDoublePrecision.h"
#include "OSGFinite.h"

namespace OSG
{
namespace
{
UInt64 hash_of(Pnt3f const &point)
{
    constexpr UInt64 Odd = 0xD6E8FEB86659FD93u;
    UInt64 hash = 0;
    for(std::size_t axis = 0; axis < 3; ++axis)
        hash = (hash ^ std::bit_cast<UInt32>(point[axis])) * Odd;
    return hash;
}

UInt64 hash_of(UInt32 a, UInt32 b) { return UInt64(a) << 32 | b; }

// The two zeros are one coordinate.
Pnt3f with_one_zero(Pnt3f const &point)
{
    return Pnt3f(point[0] + 0.f, point[1] + 0.f, point[2] + 0.f);
}

/// Across the edge towards the third corner, of length 1; not finite where there is no area.
Vec3d inward_of(Vec3d const &edge, Vec3d const &toCorner)
{
    Vec3d const across = toCorner - edge * (toCorner.dot(edge) / edge.dot(edge));
    return across / across.length();
}
} // namespace

SharpEdgeFinder::SharpEdgeFinder(Real64 degrees)
    : _smoothest(std::cos(degrees * std::numbers::pi / 180))
{
}

UInt32 SharpEdgeFinder::numberOf(Pnt3f const &given)
{
    Pnt3f const point = with_one_zero(given);
    _pointSlots.makeRoom(_points.size(), [this](UInt32 i) { return hash_of(_points[i]); });
    UInt32 &slot = _pointSlots.slot(hash_of(point), [&](UInt32 i) { return _points[i] == point; });
    if(slot == NumberSlots::None)
    {
        _points.push_back(point);
        slot = static_cast<UInt32>(_points.size() - 1);
    }
    return slot;
}

void SharpEdgeFinder::add(Pnt3f const &a, Pnt3f const &b, Pnt3f const &c)
{
    if(!is_finite(a) || !is_finite(b) || !is_finite(c))
        return;
    Pnt3f const corners[3] = {a, b, c};
    Vec3d inward[3];
    for(std::size_t i = 0; i < 3; ++i)
    {
        Pnt3d const begin = wide(corners[i]);
        inward[i] =
            inward_of(wide(corners[(i + 1) % 3]) - begin, wide(corners[(i + 2) % 3]) - begin);
        if(!is_finite(inward[i]))
            return;
    }
    UInt32 const numbers[3] = {numberOf(a), numberOf(b), numberOf(c)};
    for(std::size_t i = 0; i < 3; ++i)
        addSide(numbers[i], numbers[(i + 1) % 3], inward[i]);
}

// The first triangle is compared with all others, so their order does not count.
void SharpEdgeFinder::addSide(UInt32 a, UInt32 b, Vec3d const &inward)
{
    if(b < a)
        std::swap(a, b);
    _sideSlots.makeRoom(_sides.size(),
                        [this](UInt32 i) { return hash_of(_sides[i].ends[0], _sides[i].ends[1]); });
    UInt32 &slot = _sideSlots.slot(hash_of(a, b), [&](UInt32 i)
                                   { return _sides[i].ends[0] == a && _sides[i].ends[1] == b; });
    if(slot == NumberSlots::None)
    {
        _sides.push_back({{a, b}, narrow(inward)});
        slot = static_cast<UInt32>(_sides.size() - 1);
        return;
    }
    Side &side = _sides[slot];
    Real64 const cosine = wide(side.inward).dot(inward);
    side.isSharp = side.isSharp || std::abs(cosine) < _smoothest;
    side.goesOn = side.goesOn || cosine < 0;
}

std::vector<SharpEdgeFinder::Edge> SharpEdgeFinder::find() const
{
    std::vector<Edge> edges;
    for(Side const &side : _sides)
    {
        if(side.isSharp || !side.goesOn)
            edges.push_back({_points[side.ends[0]], _points[side.ends[1]]});
    }
    return edges;
}
} // namespace OSG
