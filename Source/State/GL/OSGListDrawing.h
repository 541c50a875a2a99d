#pragma once

#include "OSGDrawList.h"

namespace OSG
{
class DrawEnv;

/// Draws a list into the frame buffer and over the viewport of the current context, which is that
/// of the environment's object store: first what is opaque, then what is transparent, without
/// writing depths; in the look of the environment. The context is in OpenGL's initial state before,
/// but for viewport and scissor, and is left in any state; Viewport::render sees to both.
OSG_STATE_API void draw_list(DrawEnv &env, DrawList const &list);
} // namespace OSG
