#pragma once

#include "OSGFrameBufferObjectBase.h"

namespace OSG
{
/// A picture in memory that a view draws into instead of a window. Its size is in pixels.
class OSG_WINDOW_API FrameBufferObject : public FrameBufferObjectBase
{
  protected:
    FrameBufferObject() = default;
    FrameBufferObject(FrameBufferObject const &) = default;
    ~FrameBufferObject() override;

    friend Pattern;
};
} // namespace OSG
