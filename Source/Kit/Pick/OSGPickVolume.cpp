#include "OSGPickVolume.h"

#include <algorithm>
#include <cmath>

namespace OSG
{
namespace
{
// The corners of `area` at `depth`, counter-clockwise from the left bottom corner.
void put_face(WindowView const &view, PixelArea const &area, Matrix const &camera, Real64 depth,
              Pnt3f *corners)
{
    Real64 const halfHeight = shown_height(view, depth) / 2;
    Real64 const pixel = 2 * halfHeight / view.height;
    Real64 const halfWidth = pixel * view.width / 2;
    Real32 const left = static_cast<Real32>(area.left * pixel - halfWidth);
    Real32 const right = static_cast<Real32>(area.right * pixel - halfWidth);
    Real32 const top = static_cast<Real32>(halfHeight - area.top * pixel);
    Real32 const bottom = static_cast<Real32>(halfHeight - area.bottom * pixel);
    Real32 const z = static_cast<Real32>(-depth);
    Pnt3f const inView[4] = {
        {left, bottom, z}, {right, bottom, z}, {right, top, z}, {left, top, z}};
    for(int i = 0; i < 4; ++i)
        camera.mult(inView[i], corners[i]);
}

// The depth from which on the corners of a small area differ by enough units in the last place.
// Corners that round to the same point would give planes in arbitrary directions.
Real64 depth_of_distinct_corners(WindowView const &view, Real32 radius)
{
    constexpr Real64 PixelsApart = 2;
    constexpr Real64 UnitsApart = 16;
    Real32 largest = 0;
    for(UInt32 axis = 0; axis < 3; ++axis)
        largest = std::max(largest, std::abs(view.from[axis]));
    Real64 const unit = Real64(std::nextafter(largest, INFINITY)) - largest;
    Real64 const pixels = std::min<Real64>(radius, PixelsApart);
    return UnitsApart * unit / (pixels * shown_height(view, 1) / view.height);
}

bool has_extent(PixelArea const &area)
{
    return area.left < area.right && area.top < area.bottom && std::isfinite(area.left) &&
           std::isfinite(area.right) && std::isfinite(area.top) && std::isfinite(area.bottom);
}
} // namespace

PixelArea pixel_square(Real32 x, Real32 y, Real32 radius)
{
    return {x - radius, y - radius, x + radius, y + radius};
}

PixelArea pixel_rectangle(Real32 x0, Real32 y0, Real32 x1, Real32 y1)
{
    return {std::min(x0, x1), std::min(y0, y1), std::max(x0, x1), std::max(y0, y1)};
}

std::optional<ViewDepths> pick_depths(WindowView const &view, SceneBounds const &bounds,
                                      Real32 radius)
{
    bool const isEmpty = bounds.box.isEmpty() && !bounds.holdsInfinite;
    if(!is_view(view) || isEmpty || bounds.box.isInfinite())
        return std::nullopt;
    ViewDepths depths = depths_in_view(bounds, camera_of(view));
    if(!depths.isVisible() || !std::isfinite(depths.farSide))
        return std::nullopt;
    if(!view.orthographicHeight) // else corners are as far apart at each depth
        depths.nearSide = std::max(depths.nearSide, depth_of_distinct_corners(view, radius));
    if(!(depths.nearSide < depths.farSide))
        return std::nullopt;
    return depths;
}

std::optional<Frustum> pick_volume(WindowView const &view, PixelArea const &area,
                                   SceneBounds const &bounds, Real32 radius)
{
    std::optional<ViewDepths> const depths = pick_depths(view, bounds, radius);
    if(!depths || !has_extent(area))
        return std::nullopt;
    Matrix const camera = camera_of(view);
    Pnt3f corners[8];
    put_face(view, area, camera, depths->nearSide, corners);
    put_face(view, area, camera, depths->farSide, corners + 4);
    return Frustum(corners);
}

std::optional<Frustum> pick_volume(WindowView const &view, PixelArea const &area,
                                   BoxVolume const &bounds, Real32 radius)
{
    return pick_volume(view, area, SceneBounds{bounds}, radius);
}
} // namespace OSG
