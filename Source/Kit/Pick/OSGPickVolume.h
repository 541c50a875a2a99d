#pragma once

/// \file
/// The volumes that belong to a click or a rubber band in a view.

#include <optional>

#include "OSGFrustum.h"
#include "OSGSceneBounds.h"
#include "OSGTolvaniteKitApi.h"
#include "OSGViewDepths.h"
#include "OSGWindowView.h"

namespace OSG
{
/// A rectangle of a window in pixels, counted from the window's left top corner. x = 0 is the left
/// edge of the window and x = width is its right edge. The rectangle may reach beyond the window.
struct PixelArea
{
    Real32 left, top, right, bottom;
};

/// The square from `x - radius` to `x + radius` and from `y - radius` to `y + radius`.
OSG_TOLVANITEKIT_API PixelArea pixel_square(Real32 x, Real32 y, Real32 radius);
/// The rectangle between two opposite corners, given in any order.
OSG_TOLVANITEKIT_API PixelArea pixel_rectangle(Real32 x0, Real32 y0, Real32 x1, Real32 y1);

/// The radius of a click in pixels if the caller gives none.
inline constexpr Real32 DefaultPickRadius = 2;

/// The depths between which a view picks.
///
/// They are those of depths_in_view (OSGViewDepths.h), but the near side is not before the depth at
/// which two pixels, or `radius` where that is less, are 16 units in the last place of the eye's
/// largest coordinate. Nearer than that, corners a pixel apart would round to one point. A view
/// without perspective does without this bound, because its pixels have one size.
///
/// There is no value if the scene is empty or behind the eye, if the near side is not nearer than
/// the far side, or if is_view is false for the view.
OSG_TOLVANITEKIT_API std::optional<ViewDepths>
pick_depths(WindowView const &view, SceneBounds const &bounds, Real32 radius = DefaultPickRadius);

/// The solid that `area` covers in the view between pick_depths, in the coordinates of the eye and
/// the bounds. There is no value where there are no depths, or if the area has no extent.
OSG_TOLVANITEKIT_API std::optional<Frustum> pick_volume(WindowView const &view,
                                                        PixelArea const &area,
                                                        SceneBounds const &bounds,
                                                        Real32 radius = DefaultPickRadius);
/// For a scene with these finite bounds. There is no value if they are infinite.
OSG_TOLVANITEKIT_API std::optional<Frustum> pick_volume(WindowView const &view,
                                                        PixelArea const &area,
                                                        BoxVolume const &bounds,
                                                        Real32 radius = DefaultPickRadius);
} // namespace OSG
