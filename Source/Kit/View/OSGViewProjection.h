#pragma once

/// \file
/// From perspective to a view without it and back.

#include "OSGTolvaniteKitApi.h"
#include "OSGWindowView.h"

namespace OSG
{
/// The view without perspective that shows the same at the depth of `at`, from the same eye. `view`
/// itself if it has no perspective, or where is_view is false for it.
OSG_TOLVANITEKIT_API WindowView to_orthographic(WindowView const &view);
/// The view with perspective that shows the same at the depth of `at`. The field of view is that of
/// `view`, or DefaultFieldOfView where that is not between 0 and 180, so that the eye comes to
/// perspective_distance() from `at`. `view` itself if it has perspective, or where is_view is false
/// for it.
OSG_TOLVANITEKIT_API WindowView to_perspective(WindowView const &view);
/// How far from `at` an eye with perspective sees as much there as `view` shows. 0 where is_view is
/// false.
OSG_TOLVANITEKIT_API Real64 perspective_distance(WindowView const &view);
} // namespace OSG
