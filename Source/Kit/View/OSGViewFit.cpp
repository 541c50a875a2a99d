#include "OSGViewFit.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "OSGFinite.h"
#include "OSGViewFrame.h"
#include "OSGViewProjection.h"

namespace OSG
{
namespace
{
/// Where the eye stands at least, in half depths of the box: a line along the view needs it.
constexpr Real64 BeforeTheBox = 1.01;

/// The corners of a box, as seen from the middle of it along the axes of a camera.
struct SeenCorners
{
    Pnt3d middle;
    std::array<Vec3d, 8> corners; // x to the right, y upwards, z towards the eye
};

SeenCorners corners_of(BoxVolume const &box, ViewAxes const &axes)
{
    Pnt3d const end[2] = {wide(box.getMin()), wide(box.getMax())};
    Vec3d half = (end[1] - end[0]) * 0.5;
    SeenCorners seen;
    seen.middle = end[0] + half;
    if(half == Vec3d())
        half = Vec3d(1, 1, 1);
    for(std::size_t i = 0; i < seen.corners.size(); ++i)
    {
        Vec3d const way((i & 1) != 0 ? half[0] : -half[0], (i & 2) != 0 ? half[1] : -half[1],
                        (i & 4) != 0 ? half[2] : -half[2]);
        seen.corners[i] = Vec3d(way.dot(axes.right), way.dot(axes.up), way.dot(axes.back));
    }
    return seen;
}

/// A corner (c, z) is seen by an eye at (e, d) under a tangent `slope` where |c - e| is at most
/// slope * (d - z). Both inequalities are lines; these are the ones that all corners are behind.
struct Stand
{
    Real64 right; ///< at most e + slope * d
    Real64 left;  ///< at most slope * d - e

    Real64 nearest(Real64 slope) const { return (right + left) / (2 * slope); }
    /// The middle of the places from which all corners are seen at any distance.
    Real64 beside() const { return (right - left) / 2; }
};

Stand stand_for(SeenCorners const &seen, std::size_t axis, Real64 slope)
{
    Stand stand{-INFINITY, -INFINITY};
    for(Vec3d const &corner : seen.corners)
    {
        stand.right = std::max(stand.right, slope * corner[2] + corner[axis]);
        stand.left = std::max(stand.left, slope * corner[2] - corner[axis]);
    }
    return stand;
}

Real64 half_extent(SeenCorners const &seen, std::size_t axis)
{
    Real64 largest = 0;
    for(Vec3d const &corner : seen.corners)
        largest = std::max(largest, std::abs(corner[axis]));
    return largest;
}

WindowView fit_perspective(WindowView const &view, ViewFrame const &frame, SeenCorners const &seen,
                           Real64 share)
{
    Real64 const slope = shown_height(view, 1) / 2 * share;
    Real64 const slopeAcross = slope * view.width / view.height;
    Stand const across = stand_for(seen, 0, slopeAcross);
    Stand const upwards = stand_for(seen, 1, slope);
    Real64 const distance = std::max(
        {across.nearest(slopeAcross), upwards.nearest(slope), half_extent(seen, 2) * BeforeTheBox});
    Pnt3d const target =
        seen.middle + frame.axes.right * across.beside() + frame.axes.up * upwards.beside();
    return anchored_view(view, frame.axes.back * distance, view.up,
                         middle_anchor(view, target, distance))
        .value_or(view);
}

WindowView fit_orthographic(WindowView const &view, ViewFrame const &frame, SeenCorners const &seen,
                            Real64 share)
{
    Real64 const aspect = Real64(view.width) / view.height;
    Real64 half = std::max(half_extent(seen, 1), half_extent(seen, 0) / aspect);
    if(half == 0) // a line along the view
        half = half_extent(seen, 2);
    WindowView fitted = view;
    fitted.orthographicHeight = static_cast<Real32>(2 * half / share);
    if(!is_view(fitted))
        return view;
    Real64 const distance =
        std::max(perspective_distance(fitted), half_extent(seen, 2) * BeforeTheBox);
    return anchored_view(fitted, frame.axes.back * distance, view.up,
                         middle_anchor(fitted, seen.middle, distance))
        .value_or(view);
}
} // namespace

WindowView fit(WindowView const &view, BoxVolume const &box, Real32 margin)
{
    std::optional<ViewFrame> const frame = frame_of(view);
    bool const hasBox =
        !box.isEmpty() && !box.isInfinite() && is_finite(box.getMin()) && is_finite(box.getMax());
    if(!frame || !hasBox || !(margin >= 0 && margin < 0.5f))
        return view;
    SeenCorners const seen = corners_of(box, frame->axes);
    Real64 const share = 1 - 2 * Real64(margin);
    return view.orthographicHeight ? fit_orthographic(view, *frame, seen, share)
                                   : fit_perspective(view, *frame, seen, share);
}

WindowView fit(WindowView const &view, SceneBounds const &bounds, Real32 margin)
{
    BoxVolume const unit(Pnt3f(-1, -1, -1), Pnt3f(1, 1, 1));
    return fit(view, bounds.box.isEmpty() ? unit : bounds.box, margin);
}
} // namespace OSG
