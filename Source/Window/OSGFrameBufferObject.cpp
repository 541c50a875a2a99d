#include "OSGFrameBufferObject.h"

#include <epoxy/gl.h>

#include "OSGGLContext.h"
#include "OSGGLObjectStore.h"
#include "OSGHostState.h"
#include "OSGImage.h"
#include "OSGLog.h"
#include "OSGPixelReading.h"
#include "OSGTargetStore.h"

namespace OSG
{
FrameBufferObject::~FrameBufferObject() { GLObjectStore::forgetTarget(this); }

char const *FrameBufferObject::activate(GLObjectStore &objects)
{
    return objects.targets().bind(this, getWidth(), getHeight());
}

bool FrameBufferObject::read(Image &image)
{
    char const *reason = gl_refusal();
    if(reason == nullptr)
    {
        HostState const host;
        reason = host.isKept() ? activate(GLObjectStore::current())
                               : "the stacks of attributes are full";
        if(reason == nullptr)
        {
            std::vector<UInt8> pixels(std::size_t(3) * getWidth() * getHeight());
            read_pixels(getWidth(), getHeight(), pixels.data());
            image.set(getWidth(), getHeight(), 3, pixels.data());
        }
    }
    if(reason != nullptr)
        OSG_LOG_WARNING("FrameBufferObject::read: %s\n", reason);
    return reason == nullptr;
}
} // namespace OSG
