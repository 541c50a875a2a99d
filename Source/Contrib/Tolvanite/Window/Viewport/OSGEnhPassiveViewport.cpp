#include "OSGEnhPassiveViewport.h"

#include <epoxy/gl.h>

#include "OSGGLContext.h"
#include "OSGLog.h"

namespace OSG
{
EnhPassiveViewport::~EnhPassiveViewport() = default;

bool EnhPassiveViewport::isPassive() const { return true; }

// What is missing is looked for here as well as in the base class, because the edges must stay
// then.
void EnhPassiveViewport::render(RenderActionBase *action)
{
    if(char const *const missing = findMissing())
    {
        OSG_LOG_WARNING("Viewport::render: no %s!\n", missing);
        return;
    }
    if(char const *const reason = gl_refusal())
    {
        OSG_LOG_WARNING("Viewport::render: %s, nothing is drawn\n", reason);
        return;
    }
    Int32 viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    auto const [x, y, width, height] = viewport;
    setLeft(static_cast<Real32>(x));
    setBottom(static_cast<Real32>(y));
    setRight(static_cast<Real32>(x + width - 1));
    setTop(static_cast<Real32>(y + height - 1));
    Viewport::render(action);
}

void EnhPassiveViewport::activateSize()
{
    Int32 const left = calcPixelLeft();
    Int32 const bottom = calcPixelBottom();
    Int32 const right = calcPixelRight();
    Int32 const top = calcPixelTop();
    glViewport(left, bottom, right - left + 1, top - bottom + 1);
}
} // namespace OSG
