#include "OSGFrameBufferObject.h"

namespace OSG
{
FrameBufferObject::~FrameBufferObject() = default;
} // namespace OSG
