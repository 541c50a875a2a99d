#include "OSGViewWay.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "OSGViewFrame.h"
#include "OSGViewProjection.h"

namespace OSG
{
namespace
{
struct Turn
{
    Vec3d axis; // of length 1, or null for no turn
    Real64 angle = 0;
};

/// The matrix that carries the axes of one camera to those of another: rows and columns of the
/// scene.
using Rotation = std::array<Vec3d, 3>; // by row

Rotation rotation_between(ViewAxes const &from, ViewAxes const &to)
{
    Rotation rows;
    for(std::size_t row = 0; row < 3; ++row)
        rows[row] = from.right * to.right[row] + from.up * to.up[row] + from.back * to.back[row];
    return rows;
}

/// Shepperd: Quaternion from rotation matrix, 1978. The largest component is found first, so that
/// half a turn keeps its axis.
Turn turn_of(Rotation const &m)
{
    Real64 const diagonal[4] = {1 + m[0][0] - m[1][1] - m[2][2], 1 - m[0][0] + m[1][1] - m[2][2],
                                1 - m[0][0] - m[1][1] + m[2][2], 1 + m[0][0] + m[1][1] + m[2][2]};
    auto const largest =
        static_cast<std::size_t>(std::max_element(diagonal, diagonal + 4) - diagonal);
    Real64 const skew[3] = {m[2][1] - m[1][2], m[0][2] - m[2][0], m[1][0] - m[0][1]};
    // Four times the largest component times (x, y, z, w).
    Real64 product[4];
    product[largest] = diagonal[largest];
    for(std::size_t i = 0; i < 3; ++i)
    {
        std::size_t const next = (i + 1) % 3;
        if(largest == 3)
            product[i] = skew[i];
        else if(largest == i)
            product[3] = skew[i];
        if(largest == i)
            product[next] = m[next][i] + m[i][next];
        else if(largest == next)
            product[i] = m[next][i] + m[i][next];
    }
    Vec3d axis(product[0], product[1], product[2]);
    Real64 const sine = axis.length();
    if(!(sine > 0))
        return {};
    // A negative w stands for the longer way about the same axis.
    Real64 const sign = product[3] < 0 ? -1 : 1;
    return {axis * (sign / sine), 2 * std::atan2(sine, std::abs(product[3]))};
}

Real64 by_equal_ratios(Real64 from, Real64 to, Real64 share)
{
    return from * std::pow(to / from, share);
}

/// How far the point looked at has gone when the size is that of `share`. A view whose size changes
/// then moves as a zoom about one point does.
Real64 share_of_way(Real64 fromSize, Real64 toSize, Real64 share)
{
    constexpr Real64 SameSize = 1e-6;
    if(std::abs(toSize - fromSize) <= SameSize * fromSize)
        return share;
    return (by_equal_ratios(fromSize, toSize, share) - fromSize) / (toSize - fromSize);
}

std::optional<WindowView> between(WindowView const &from, WindowView const &to, Real64 share)
{
    std::optional<ViewFrame> const begin = frame_of(from);
    std::optional<ViewFrame> const end = frame_of(to);
    Real64 const beginDistance = begin->offset.length();
    Real64 const endDistance = end->offset.length();
    Real64 const distance = by_equal_ratios(beginDistance, endDistance, share);
    WindowView view = to;
    view.fieldOfView =
        static_cast<Real32>(from.fieldOfView + (Real64(to.fieldOfView) - from.fieldOfView) * share);
    if(from.orthographicHeight)
        view.orthographicHeight = static_cast<Real32>(
            by_equal_ratios(*from.orthographicHeight, *to.orthographicHeight, share));
    Real64 const gone =
        share_of_way(shown_height(from, beginDistance), shown_height(to, endDistance), share);
    Turn const turn = turn_of(rotation_between(begin->axes, end->axes));
    Vec3d const back = turned(begin->axes.back, turn.axis, turn.angle * share);
    Vec3d const up = turned(begin->axes.up, turn.axis, turn.angle * share);
    Pnt3d const at = wide(from.at) + (wide(to.at) - wide(from.at)) * gone;
    return anchored_view(view, back * distance, narrow(up), middle_anchor(view, at, distance));
}
} // namespace

WindowView view_between(WindowView const &from, WindowView const &to, Real32 share)
{
    if(share >= 1 || std::isnan(share) || !is_view(from) || !is_view(to))
        return to;
    if(share <= 0)
        return from;
    WindowView const alike = from.orthographicHeight ? to_orthographic(to) : to_perspective(to);
    bool const isAlike =
        alike.orthographicHeight.has_value() == from.orthographicHeight.has_value();
    if(!isAlike || !is_view(alike))
        return to; // its size has no number in the other projection
    return between(from, alike, share).value_or(to);
}
} // namespace OSG
