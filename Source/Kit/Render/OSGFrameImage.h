#pragma once

/// \file
/// Pictures of what is drawn in a host's window, and of pixels in general.

#include <vector>

#include "OSGImage.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// Reads what was drawn in the current context: `width` by `height` pixels from the left bottom
/// corner of the frame buffer that is bound for drawing, of the window's that which is not shown
/// yet. So it is called after the drawing and before the buffers are swapped. Several samples a
/// pixel are made one colour. 3 bytes a pixel, red first, rows without padding, the top row first.
///
/// Pixels outside of the frame buffer have any colour. All settings of the host stay as they are.
/// Empty for a size without pixels, and, with a warning, where there is nothing to read: no
/// context, no frame buffer, no room on the stacks of attributes. Raises std::bad_alloc.
OSG_TOLVANITEKIT_API std::vector<UInt8> read_frame(UInt32 width, UInt32 height);

/// An image of such pixels, the bottom row first, as files have it. Null, with a warning, where
/// their number is not that of the size, or 0. Raises std::bad_alloc.
OSG_TOLVANITEKIT_API TransitPtr<Image> image_of(std::vector<UInt8> const &pixels, UInt32 width,
                                                UInt32 height);
} // namespace OSG
