#include "OSGViewMoves.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "OSGFinite.h"
#include "OSGViewFrame.h"

namespace OSG
{
namespace
{
/// A pixel that is smaller, in units in the last place of the eye, is not zoomed into.
constexpr Real64 SmallestPixel = 16;

bool is_before_eye(WindowView const &view, Real64 depth)
{
    return view.orthographicHeight || depth > 0;
}

/// The frame of a view that shows a point before its eye; nothing for other views and points.
std::optional<ViewFrame> frame_before(WindowView const &view, Pnt3f const &point)
{
    std::optional<ViewFrame> const frame = frame_of(view);
    if(!frame || !is_finite(point) || !is_before_eye(view, frame->placeOf(wide(point)).depth))
        return std::nullopt;
    return frame;
}

/// `offset` as it is after a zoom, which keeps the point looked at in its place of the window.
Vec3d zoomed_offset(Vec3d const &offset, Real64 factor, Pnt3d const &eye)
{
    Real64 const length = offset.length();
    Real64 const shortest = std::min(length, ShortestTrueOffset * last_unit(eye));
    return offset * (std::max(length * factor, shortest) / length);
}

/// The view with `anchor` nearer by `factor`.
WindowView scaled_view(WindowView const &view, ViewFrame const &frame, ViewAnchor anchor,
                       Real64 factor)
{
    WindowView scaled = view;
    Vec3d offset = frame.offset;
    if(view.orthographicHeight)
    {
        scaled.orthographicHeight = static_cast<Real32>(*view.orthographicHeight * factor);
    }
    else
    {
        anchor.depth *= factor;
        Pnt3d const eye = anchor.point + frame.axes.back * anchor.depth;
        offset = zoomed_offset(offset, factor, eye);
    }
    if(!is_view(scaled))
        return view;
    Real64 const pixel = pixel_at(scaled, anchor.depth);
    Pnt3d const eye = anchor.point + frame.axes.back * anchor.depth;
    if(factor < 1 && !(pixel >= SmallestPixel * last_unit(eye)))
        return view;
    return anchored_view(scaled, offset, view.up, anchor).value_or(view);
}

Vec3d in_axes(ViewAxes const &axes, Vec3d const &v)
{
    return axes.right * v[0] + axes.up * v[1] + axes.back * v[2];
}

/// The height of a view without perspective after a shift backwards. The way to `at` is the measure
/// of a shift, as it is in perspective.
Real32 forwards_height(WindowView const &view, ViewFrame const &frame, Real64 backwards)
{
    WindowView scaled = view;
    Real64 const height = *view.orthographicHeight * std::exp(backwards / frame.offset.length());
    scaled.orthographicHeight = static_cast<Real32>(height);
    bool const isTooSmall = !(pixel_at(scaled, 0) >= SmallestPixel * last_unit(frame.eye));
    return backwards < 0 && isTooSmall ? *view.orthographicHeight : *scaled.orthographicHeight;
}

std::optional<Vec3d> unit_of(Vec3f const &vector)
{
    Real64 const length = wide(vector).length();
    if(!(length > 0) || !std::isfinite(length))
        return std::nullopt;
    return wide(vector) / length;
}
} // namespace

std::optional<Pnt2f> pixel_of(WindowView const &view, Pnt3f const &point)
{
    std::optional<ViewFrame> const frame = frame_before(view, point);
    if(!frame)
        return std::nullopt;
    ViewAnchor const anchor = anchor_of(view, *frame, point);
    return Pnt2f(anchor.x, anchor.y);
}

std::optional<Pnt3f> point_under(WindowView const &view, Pnt2f const &pixel, Pnt3f const &asDeepAs)
{
    std::optional<ViewFrame> const frame = frame_before(view, asDeepAs);
    if(!frame || !is_finite(pixel))
        return std::nullopt;
    Real64 const depth = frame->placeOf(wide(asDeepAs)).depth;
    Real64 const side = pixel_at(view, depth);
    Pnt3d const point = frame->eye - frame->axes.back * depth +
                        frame->axes.right * ((pixel[0] - view.width / 2.) * side) +
                        frame->axes.up * ((view.height / 2. - pixel[1]) * side);
    return Pnt3f(point[0], point[1], point[2]);
}

WindowView zoom_at(WindowView const &view, Pnt3f const &point, Pnt2f const &pixel,
                   Real32 magnification)
{
    std::optional<ViewFrame> const frame = frame_before(view, point);
    if(!frame || !is_finite(pixel) || !(magnification > 0) || !is_finite(magnification))
        return view;
    ViewAnchor anchor = anchor_of(view, *frame, point);
    anchor.x = pixel[0];
    anchor.y = pixel[1];
    return scaled_view(view, *frame, anchor, 1 / Real64(magnification));
}

WindowView zoom_window(WindowView const &view, Pnt2f const &corner, Pnt2f const &opposite,
                       Pnt3f const &asDeepAs)
{
    std::optional<ViewFrame> const frame = frame_before(view, asDeepAs);
    if(!frame || !is_finite(corner) || !is_finite(opposite))
        return view;
    Vec2f const size = opposite - corner;
    std::optional<Pnt3f> const middle = point_under(view, corner + size * 0.5f, asDeepAs);
    if(size[0] == 0 || size[1] == 0 || !middle)
        return view;
    Real64 const factor =
        std::max(std::abs(Real64(size[0])) / view.width, std::abs(Real64(size[1])) / view.height);
    Real64 const depth = frame->placeOf(wide(asDeepAs)).depth;
    return scaled_view(view, *frame, middle_anchor(view, wide(*middle), depth), factor);
}

WindowView pan_to(WindowView const &view, Pnt3f const &point, Pnt2f const &pixel)
{
    std::optional<ViewFrame> const frame = frame_before(view, point);
    if(!frame || !is_finite(pixel))
        return view;
    ViewAnchor anchor = anchor_of(view, *frame, point);
    anchor.x = pixel[0];
    anchor.y = pixel[1];
    return anchored_view(view, frame->offset, view.up, anchor).value_or(view);
}

WindowView orbit_about(WindowView const &view, Pnt3f const &point, Vec3f const &axis, Real32 angle)
{
    std::optional<ViewFrame> const frame = frame_of(view);
    std::optional<Vec3d> const unit = unit_of(axis);
    if(!frame || !unit || !is_finite(point) || !is_finite(angle))
        return view;
    return anchored_view(view, turned(frame->offset, *unit, angle),
                         narrow(turned(wide(view.up), *unit, angle)),
                         anchor_of(view, *frame, point))
        .value_or(view);
}

WindowView orbit_upright(WindowView const &view, Pnt3f const &point, Vec3f const &worldUp,
                         Real32 around, Real32 over)
{
    std::optional<ViewFrame> const frame = frame_of(view);
    std::optional<Vec3d> const top = unit_of(worldUp);
    if(!frame || !top || !is_finite(point) || !is_finite(around) || !is_finite(over))
        return view;
    constexpr Real64 Quarter = std::numbers::pi / 2;
    Real64 const rise = std::asin(std::clamp(frame->axes.back.dot(*top), -1., 1.));
    Real64 const climb = std::clamp(rise + over, -Quarter, Quarter) - rise;
    auto const carry = [&](Vec3d const &v)
    { return turned(turned(v, frame->axes.right, -climb), *top, around); };
    return anchored_view(view, carry(frame->offset), narrow(carry(frame->axes.up)),
                         anchor_of(view, *frame, point))
        .value_or(view);
}

WindowView move_by(WindowView const &view, Vec3f const &shift, Vec3f const &turn,
                   std::optional<Pnt3f> const &pivot)
{
    std::optional<ViewFrame> const frame = frame_of(view);
    bool const isStill = shift == Vec3f(0, 0, 0) && turn == Vec3f(0, 0, 0);
    if(!frame || isStill || !is_finite(shift) || !is_finite(turn) || (pivot && !is_finite(*pivot)))
        return view;
    Real64 const angle = wide(turn).length();
    std::optional<Vec3d> const axis = unit_of(turn);
    auto const carry = [&](Vec3d const &v)
    { return axis ? turned(v, in_axes(frame->axes, *axis), angle) : v; };
    Vec3d const offset = carry(frame->offset);
    Vec3d const up = carry(wide(view.up));
    std::optional<ViewAxes> const axes = axes_of(offset, up);
    if(!axes)
        return view;
    Vec3d way = wide(shift);
    WindowView moved = view;
    if(view.orthographicHeight)
        moved.orthographicHeight = forwards_height(view, *frame, std::exchange(way[2], 0));
    // A pivot beside the eye or behind it has no pixel.
    bool const hasPixel = pivot && is_before_eye(view, frame->placeOf(wide(*pivot)).depth);
    Pnt3d const eye = pivot ? wide(*pivot) + carry(frame->eye - wide(*pivot)) : frame->eye;
    ViewAnchor anchor = hasPixel ? anchor_of(view, *frame, *pivot)
                                 : middle_anchor(view, eye - offset, offset.length());
    anchor.point = anchor.point + in_axes(*axes, way);
    return anchored_view(moved, offset, narrow(up), anchor).value_or(view);
}
} // namespace OSG
