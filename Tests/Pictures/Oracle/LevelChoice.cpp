#include "LevelChoice.h"

#include <algorithm>

namespace OSG::Test
{
namespace
{
struct Extent
{
    Real64 low = 1;
    Real64 high = -1;

    void extend(Real64 value, bool first)
    {
        low = first ? value : std::min(low, value);
        high = first ? value : std::max(high, value);
    }
    // Of normalised coordinates, what is within the picture, as a share of it.
    Real64 share() const { return std::max(0.0, std::min(high, 1.0) - std::max(low, -1.0)) / 2; }
};

Real64 share_of_picture(BoxVolume const &box, Matrix4d const &toEye, SlowView const &view)
{
    if(box.isInfinite())
        return 1;
    if(box.isEmpty())
        return 0;
    Extent columns;
    Extent rows;
    for(int corner = 0; corner < 8; ++corner)
    {
        Vec4d point(0.0, 0.0, 0.0, 1.0);
        for(int axis = 0; axis < 3; ++axis)
            point[axis] = (corner >> axis & 1) != 0 ? box.getMax()[axis] : box.getMin()[axis];
        Vec4d const clip = view.projection * (toEye * point);
        if(clip[2] < -clip[3])
            return 1;
        columns.extend(clip[0] / clip[3], corner == 0);
        rows.extend(clip[1] / clip[3], corner == 0);
    }
    return columns.share() * rows.share();
}
} // namespace

UInt32 level_by_distance(Pnt3f const &center, std::span<Real32 const> ranges, Matrix4d const &toEye)
{
    Vec4d const place = toEye * Vec4d(Real64(center[0]), Real64(center[1]), Real64(center[2]), 1.0);
    Real64 const distance = direction_of(place).length();
    return static_cast<UInt32>(
        std::count_if(ranges.begin(), ranges.end(), [&](Real32 r) { return r <= distance; }));
}

UInt32 level_by_coverage(BoxVolume const &box, std::span<Real32 const> coverages,
                         Matrix4d const &toEye, SlowView const &view)
{
    Real64 const share = share_of_picture(box, toEye, view);
    return static_cast<UInt32>(
        std::count_if(coverages.begin(), coverages.end(), [&](Real32 c) { return c > share; }));
}
} // namespace OSG::Test
