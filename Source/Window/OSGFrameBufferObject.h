#pragma once

#include "OSGFrameBufferObjectBase.h"

namespace OSG
{
/// A picture in memory that is drawn into in place of a window; sizes in pixels.
class OSG_WINDOW_API FrameBufferObject : public FrameBufferObjectBase
{
  protected:
    FrameBufferObject() = default;
    FrameBufferObject(FrameBufferObject const &) = default;
    ~FrameBufferObject() override;

    friend Pattern;
};
} // namespace OSG
