#pragma once

/// \file
/// Views that show the whole of something.

#include "OSGBoxVolume.h"
#include "OSGSceneBounds.h"
#include "OSGTolvaniteKitApi.h"
#include "OSGWindowView.h"

namespace OSG
{
/// The share of the window that stays free at each edge, at least.
inline constexpr Real32 DefaultFitMargin = 0.05f;

/// Shows all of the box, as large as the window lets it, in the direction in which `view` looks.
///
/// In perspective the eye moves; otherwise the height of the view changes, and the eye stands where
/// an eye with perspective would, but before the whole of the box. `at` becomes the point in the
/// middle of the window that is as deep as the middle of the box. A box without extent counts as
/// one that reaches 1 in each direction.
///
/// `view` itself where is_view is false for it, where the box is empty or not finite, or where the
/// margin is not within 0 to 0.5, 0.5 itself left out.
OSG_TOLVANITEKIT_API WindowView fit(WindowView const &view, BoxVolume const &box,
                                    Real32 margin = DefaultFitMargin);
/// Shows all of a scene. Bounds without a box count as the box that reaches 1 in each direction
/// from (0, 0, 0).
OSG_TOLVANITEKIT_API WindowView fit(WindowView const &view, SceneBounds const &bounds,
                                    Real32 margin = DefaultFitMargin);
} // namespace OSG
