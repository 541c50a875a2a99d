#include "OSGViewPlanes.h"

#include <algorithm>
#include <cmath>

namespace OSG
{
namespace
{
// A plane's value at a box's corner has four products and four sums, each off by half an ulp of
// what they add up at most.
constexpr Real64 ErrorOfValue = 8 * 0x1p-24;
} // namespace

Real32 ViewPlanes::Plane::marginFor(Real32 reach) const
{
    Real64 size = std::abs(offset);
    for(Real32 const component : normal)
        size += std::abs(Real64(component)) * reach;
    return static_cast<Real32>(size * ErrorOfValue);
}

ViewPlanes::ViewPlanes(Matrix4d const &toScreen)
{
    for(std::size_t row = 0; row < 3; ++row)
    {
        for(Real64 const sign : {1., -1.})
        {
            Vector<Real64, 4> plane;
            for(std::size_t c = 0; c < 4; ++c)
                plane[c] = toScreen[c][3] + sign * toScreen[c][row];
            add(plane);
        }
    }
}

void ViewPlanes::add(Vector<Real64, 4> const &plane)
{
    if(_numPlanes == MostPlanes)
        return;
    Plane &added = _planes[_numPlanes++];
    for(std::size_t axis = 0; axis < 3; ++axis)
        added.normal[axis] = static_cast<Real32>(plane[axis]);
    added.offset = static_cast<Real32>(plane[3]);
}

void ViewPlanes::setReach(Real32 reach)
{
    for(Plane &plane : _planes)
        plane.margin = plane.marginFor(reach);
}

void ViewPlanes::test(BoxLanes const &boxes, UInt32 quad, FourMask &missed, FourMask &inside) const
{
    missed = FourMask{};
    inside = ~FourMask{};
    for(Plane const &plane : planes())
    {
        FourReal32 farthest = FourReal32{} + plane.offset; // value at the corner farthest inwards
        FourReal32 nearest = farthest;
        for(int axis = 0; axis < 3; ++axis)
        {
            FourReal32 const atMin = boxes.minOf(axis, quad) * plane.normal[axis];
            FourReal32 const atMax = boxes.maxOf(axis, quad) * plane.normal[axis];
            bool const ascends = plane.normal[axis] >= 0;
            farthest += ascends ? atMax : atMin;
            nearest += ascends ? atMin : atMax;
        }
        missed |= farthest < FourReal32{} - plane.margin;
        inside &= nearest > FourReal32{} + plane.margin;
    }
}

ViewPlanes::Sight ViewPlanes::test(BoxVolume const &box) const
{
    if(box.isInfinite())
        return Sight::Some;
    if(box.isEmpty())
        return Sight::None;
    BoxLanes lanes{};
    Real32 reach = 0;
    for(int axis = 0; axis < 3; ++axis)
    {
        lanes.min[axis][0] = box.getMin()[axis];
        lanes.max[axis][0] = box.getMax()[axis];
        reach = std::max({reach, std::abs(box.getMin()[axis]), std::abs(box.getMax()[axis])});
    }
    ViewPlanes planes = *this;
    planes.setReach(reach);
    FourMask missed;
    FourMask inside;
    planes.test(lanes, 0, missed, inside);
    return missed[0] != 0 ? Sight::None : inside[0] != 0 ? Sight::All : Sight::Some;
}
} // namespace OSG
