#pragma once

#include "OSGFrameBufferObjectBase.h"

namespace OSG
{
class GLObjectStore;
class Image;

/// A picture in the memory of the driver, with depths, that views draw into instead of a window.
/// Views that draw into it have their pixels in it: those of the whole one are from 0 to width - 1
/// and height - 1. Each context has a picture of its own.
class OSG_WINDOW_API FrameBufferObject : public FrameBufferObjectBase
{
  public:
    /// Makes the picture the frame buffer of the current context, whose objects are `objects`.
    /// Null, or why that cannot be, as half a sentence; nothing has changed then. A new picture,
    /// and one whose size has changed, holds anything until a view clears it.
    char const *activate(GLObjectStore &objects);
    /// Fills `image` with the colours that the views have drawn in the current context, 3 bytes a
    /// pixel. False, with a warning, where there is no picture; the image then stays.
    bool read(Image &image);

  protected:
    FrameBufferObject() = default;
    FrameBufferObject(FrameBufferObject const &) = default;
    ~FrameBufferObject() override;

    friend Pattern;
};
} // namespace OSG
