#pragma once

#include "OSGBaseTypes.h"

namespace OSG
{
/// Brings the current context into OpenGL's initial state, but for bindings of vertex arrays, array
/// buffers, textures and frame buffers, for viewport and scissor, and for what scenes do not use or
/// set before they use it. Dithering is off, and so are samples. `units` have texture coordinates.
void set_initial_state(UInt32 units);
} // namespace OSG
