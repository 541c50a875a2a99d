#pragma once

#include "OSGBaseTypes.h"
#include "OSGStateApi.h"

namespace OSG
{
/// Reads the frame buffer that is bound: 3 bytes a pixel, red first, rows without padding, the
/// bottom row first. Sets the pixel store and unbinds its buffer, which the
/// caller puts back: the host's stack of such settings may have no room for another entry.
OSG_STATE_API void read_pixels(UInt32 width, UInt32 height, UInt8 *pixels);
} // namespace OSG
