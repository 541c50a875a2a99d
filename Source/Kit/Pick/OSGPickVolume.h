#pragma once

/// \file
/// The volumes that a click or a rubber band in a perspective view stands for.

#include <optional>

#include "OSGBoxVolume.h"
#include "OSGFrustum.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// A perspective view and the window that shows it.
struct PickView
{
    Pnt3f from;           ///< the eye, in the coordinates that the scene's root lies in
    Pnt3f at;             ///< a point in the middle of the window
    Vec3f up;             ///< what points upwards in the window
    Real32 fieldOfView;   ///< vertical, in degrees, between 0 and 180
    UInt32 width, height; ///< of the window, in pixels
};

/// Part of a window in pixels, counted from its left top corner: x = 0 is the left edge, x = width
/// the right one. It may reach beyond the window.
struct PixelArea
{
    Real32 left, top, right, bottom;
};

/// What a pixel covers: the square from `x - radius` to `x + radius`, likewise in y.
OSG_TOLVANITEKIT_API PixelArea pixel_square(Real32 x, Real32 y, Real32 radius);
/// The rectangle between two opposite corners, whichever they are.
OSG_TOLVANITEKIT_API PixelArea pixel_rectangle(Real32 x0, Real32 y0, Real32 x1, Real32 y1);

/// False where no picture can be taken: no window, an angle that is none, `at` at `from`, `up` of
/// no length or along the view, numbers that are none.
OSG_TOLVANITEKIT_API bool is_view(PickView const &view);

/// The solid that `area` covers in the view, from the front to the back of `bounds`, in the
/// coordinates of the eye and the bounds.
///
/// Its far side lies at the largest depth of the bounds' corners times 1.001, its near side at the
/// larger of their smallest depth times 0.999 and a 10,000th of the far side's. Nothing where there
/// is nothing to hit: bounds that are empty, have no end or lie behind the eye, an area without
/// extent, or what is no view.
OSG_TOLVANITEKIT_API std::optional<Frustum> pick_volume(PickView const &view, PixelArea const &area,
                                                        BoxVolume const &bounds);
} // namespace OSG
