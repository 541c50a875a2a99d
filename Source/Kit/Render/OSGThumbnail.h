#pragma once

#include "OSGPicture.h"

namespace OSG
{
/// A small picture of the whole scene below `root`, as fitted_view looks at it, by a light at the
/// eye. It needs no window and no context: it makes one for the call. A scene of nothing, and null,
/// give the background. Where nothing can be drawn, the picture is empty and says why: no OpenGL, a
/// size without pixels or beyond the driver. Raises std::bad_alloc.
OSG_TOLVANITEKIT_API Picture thumbnail_of(Node *root, UInt32 width, UInt32 height,
                                          Color3f const &background = Color3f(1, 1, 1));
/// In the size of a context that serves for many of them.
OSG_TOLVANITEKIT_API Picture thumbnail_of(OffscreenContext &context, Node *root,
                                          Color3f const &background = Color3f(1, 1, 1));
} // namespace OSG
