#include "OSGViewDepths.h"

#include <algorithm>
#include <cmath>

#include "OSGSceneBounds.h"

namespace OSG
{
namespace
{
/// What lies in the far side itself is still seen.
constexpr Real64 BeyondFarthest = 1.001;
constexpr Real64 BeforeNearest = 0.999;
/// The ratio of the sides that leaves a depth buffer its digits.
constexpr Real64 DeepestRatio = 10000;
constexpr ViewDepths WithoutBox{0.1, 10000};

Real64 depth_of(Pnt3f const &point, Matrix const &camera)
{
    Vec4f const &back = camera[2];
    Vec4f const &eye = camera[3];
    Real64 depth = 0;
    for(int axis = 0; axis < 3; ++axis)
        depth -= (Real64(point[axis]) - eye[axis]) * back[axis];
    return depth;
}

struct DepthRange
{
    Real64 nearest = INFINITY;
    Real64 farthest = -INFINITY;
};

DepthRange range_of(BoxVolume const &box, Matrix const &camera)
{
    Pnt3f const end[2] = {box.getMin(), box.getMax()};
    DepthRange range;
    for(int i = 0; i < 8; ++i)
    {
        Pnt3f const corner(end[i & 1][0], end[i >> 1 & 1][1], end[i >> 2 & 1][2]);
        Real64 const depth = depth_of(corner, camera);
        range.nearest = std::min(range.nearest, depth);
        range.farthest = std::max(range.farthest, depth);
    }
    return range;
}
} // namespace

ViewDepths depths_in_view(SceneBounds const &bounds, Matrix const &camera)
{
    if(bounds.box.isEmpty())
        return WithoutBox;
    DepthRange const range = range_of(bounds.box, camera);
    Real64 farSide = range.farthest * BeyondFarthest;
    for(Pnt3f const &origin : bounds.infiniteOrigins)
        farSide = std::max(farSide, depth_of(origin, camera) * BeyondFarthest);
    Real64 const nearest = farSide / DeepestRatio;
    if(bounds.holdsInfinite)
        return {nearest, farSide};
    return {std::max(range.nearest * BeforeNearest, nearest), farSide};
}
} // namespace OSG
