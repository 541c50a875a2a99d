#pragma once

/// \file
/// A view in double precision, for those who compute another view from it.

#include <optional>

#include "OSGDoublePrecision.h"
#include "OSGWindowView.h"

namespace OSG
{
/// Where things lie as seen from the camera: x to the right, y upwards, and the depth, which is the
/// distance from the eye along the direction of the view.
struct ViewPlace
{
    Real64 x, y, depth;
};

/// The axes of a camera, each of length 1.
struct ViewAxes
{
    Vec3d right, up, back;
};
/// The camera that looks against `back`, with +y as close to `up` as possible. No value where the
/// two give no direction.
std::optional<ViewAxes> axes_of(Vec3d const &back, Vec3d const &up);

/// A vector turned about an axis of length 1, right-handed, by `angle` radians.
Vec3d turned(Vec3d const &v, Vec3d const &axis, Real64 angle);

struct ViewFrame
{
    Pnt3d eye;
    Vec3d offset; ///< from `at` to the eye
    ViewAxes axes;

    ViewPlace placeOf(Pnt3d const &point) const;
};
/// No value where is_view is false.
std::optional<ViewFrame> frame_of(WindowView const &view);

/// The side of a pixel at that depth. Negative behind the eye of a view with perspective.
Real64 pixel_at(WindowView const &view, Real64 depth);

/// What a view has to show: a point at a place of the window, in pixels from its left top corner,
/// and at a depth.
struct ViewAnchor
{
    Pnt3d point;
    Real64 x, y;
    Real64 depth;
};
/// The place where `frame`, the frame of `view`, shows the point.
ViewAnchor anchor_of(WindowView const &view, ViewFrame const &frame, Pnt3f const &point);
/// The anchor in the middle of the window.
ViewAnchor middle_anchor(WindowView const &view, Pnt3d const &point, Real64 depth);

/// A view with the numbers of `view`, but with another `offset` from `at` to the eye and another
/// `up`, and with the eye at the place that the anchor asks for.
///
/// The numbers of a view are in single precision. The offset is therefore rounded first, along each
/// axis to multiples of the unit in the last place that the eye and `at` have there, and the eye is
/// computed for the direction that the rounded offset has. What is left of the error is the
/// rounding of the eye: about half of that unit along each axis.
///
/// No value where the result would not be a view.
std::optional<WindowView> anchored_view(WindowView const &view, Vec3d const &offset,
                                        Vec3f const &up, ViewAnchor const &anchor);

/// The unit in the last place of the largest coordinate of the point.
Real64 last_unit(Pnt3d const &point);
/// The shortest offset whose direction is true to a millionth when it is rounded to multiples of
/// the unit.
constexpr Real64 ShortestTrueOffset = 0x1p20;
} // namespace OSG
