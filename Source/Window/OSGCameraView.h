#pragma once

#include "OSGDrawEnv.h"
#include "OSGWindowApi.h"

namespace OSG
{
class Camera;

/// Gives `env` the view through `camera` over the area of these pixels.
OSG_WINDOW_API void set_camera_view(DrawEnv &env, Camera const &camera,
                                    DrawEnv::PixelBounds const &pixels);
} // namespace OSG
