#pragma once

#include "OSGDrawEnv.h"

namespace OSG
{
/// Lengths and differences below this count as none where sizes on the screen are computed.
inline constexpr Real32 ScreenSizeEpsilon = 1e-6f;

/// The size on the screen of one unit of the world at `origin`: its length in normalised
/// coordinates times the width of the view in pixels. Normalised coordinates span 2, so the unit
/// measures half as many pixels along the horizontal. With perspective the unit lies across the
/// line of sight, towards the camera's x axis, and its difference in depth counts too. At least
/// ScreenSizeEpsilon, also where the unit has no size, as at the camera's own place.
OSG_STATE_API Real32 unit_on_screen(DrawEnv const &env, Pnt3f const &origin);
} // namespace OSG
