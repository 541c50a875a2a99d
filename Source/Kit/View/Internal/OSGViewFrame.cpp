#include "OSGViewFrame.h"

#include <algorithm>
#include <cmath>

#include "OSGFinite.h"

namespace OSG
{
namespace
{
constexpr int MantissaBits = 23; // of Real32, without the leading one
constexpr int SmallestExponent = -149;

Real64 largest_coordinate(Pnt3d const &point)
{
    return std::max({std::abs(point[0]), std::abs(point[1]), std::abs(point[2])});
}

Real64 unit_of(Real64 value)
{
    if(!(value > 0) || !std::isfinite(value))
        return std::ldexp(1., SmallestExponent);
    return std::ldexp(1., std::max(std::ilogb(value) - MantissaBits, SmallestExponent));
}

/// The larger unit in the last place of two points, along each axis.
Vec3d units_of(Pnt3d const &a, Pnt3d const &b)
{
    auto const unit = [&](std::size_t axis)
    { return unit_of(std::max(std::abs(a[axis]), std::abs(b[axis]))); };
    return Vec3d(unit(0), unit(1), unit(2));
}

/// For points and vectors alike.
template <class Tuple>
Tuple rounded(Tuple const &tuple, Vec3d const &units)
{
    auto const number = [&](std::size_t axis)
    { return std::round(tuple[axis] / units[axis]) * units[axis]; };
    return Tuple(number(0), number(1), number(2));
}

Pnt3d eye_for(WindowView const &view, ViewAxes const &axes, ViewAnchor const &anchor)
{
    Real64 const pixel = pixel_at(view, anchor.depth);
    Vec3d const toPoint = axes.right * ((anchor.x - view.width / 2.) * pixel) +
                          axes.up * ((view.height / 2. - anchor.y) * pixel) -
                          axes.back * anchor.depth;
    return anchor.point - toPoint;
}

Pnt3f narrow_point(Pnt3d const &p) { return Pnt3f(p[0], p[1], p[2]); }
} // namespace

std::optional<ViewAxes> axes_of(Vec3d const &back, Vec3d const &up)
{
    Real64 const distance = back.length();
    Vec3d const z = back / distance;
    Vec3d const side = up.cross(z);
    Real64 const length = side.length();
    Vec3d const x = side / length;
    Vec3d const y = z.cross(x);
    if(!(length > 0) || !is_finite(x) || !is_finite(y) || !is_finite(z))
        return std::nullopt;
    return ViewAxes{x, y, z};
}

// Rodrigues' formula.
Vec3d turned(Vec3d const &v, Vec3d const &axis, Real64 angle)
{
    Real64 const cosine = std::cos(angle);
    return v * cosine + axis.cross(v) * std::sin(angle) + axis * (axis.dot(v) * (1 - cosine));
}

ViewPlace ViewFrame::placeOf(Pnt3d const &point) const
{
    Vec3d const way = point - eye;
    return {way.dot(axes.right), way.dot(axes.up), -way.dot(axes.back)};
}

std::optional<ViewFrame> frame_of(WindowView const &view)
{
    if(!is_view(view))
        return std::nullopt;
    Pnt3d const eye = wide(view.from);
    Vec3d const offset = eye - wide(view.at);
    std::optional<ViewAxes> const axes = axes_of(offset, wide(view.up));
    if(!axes)
        return std::nullopt;
    return ViewFrame{eye, offset, *axes};
}

Real64 pixel_at(WindowView const &view, Real64 depth)
{
    return shown_height(view, depth) / view.height;
}

ViewAnchor anchor_of(WindowView const &view, ViewFrame const &frame, Pnt3f const &point)
{
    ViewPlace const place = frame.placeOf(wide(point));
    Real64 const pixel = pixel_at(view, place.depth);
    return {wide(point), view.width / 2. + place.x / pixel, view.height / 2. - place.y / pixel,
            place.depth};
}

ViewAnchor middle_anchor(WindowView const &view, Pnt3d const &point, Real64 depth)
{
    return {point, view.width / 2., view.height / 2., depth};
}

std::optional<WindowView> anchored_view(WindowView const &view, Vec3d const &offset,
                                        Vec3f const &up, ViewAnchor const &anchor)
{
    std::optional<ViewAxes> const asked = axes_of(offset, wide(up));
    if(!asked)
        return std::nullopt;
    Pnt3d const near = eye_for(view, *asked, anchor);
    if(!is_finite(near))
        return std::nullopt;
    Vec3d const units = units_of(near, near - offset);
    Vec3d const roundOffset = rounded(offset, units);
    std::optional<ViewAxes> const axes = axes_of(roundOffset, wide(up));
    if(!axes)
        return std::nullopt;
    Pnt3d const eye = rounded(eye_for(view, *axes, anchor), units);
    WindowView result = view;
    result.from = narrow_point(eye);
    result.at = narrow_point(eye - roundOffset);
    result.up = up;
    return is_view(result) ? std::optional(result) : std::nullopt;
}

Real64 last_unit(Pnt3d const &point) { return unit_of(largest_coordinate(point)); }
} // namespace OSG
