#include "OSGViewport.h"

#include "OSGLog.h"
#include "OSGRenderActionBase.h"

namespace OSG
{
Viewport::~Viewport() = default;

void Viewport::render(RenderActionBase *action)
{
    char const *const missing = getCamera() == nullptr       ? "camera"
                                : getBackground() == nullptr ? "background"
                                : getRoot() == nullptr       ? "root"
                                                             : nullptr;
    if(missing != nullptr)
    {
        OSG_LOG_WARNING("Viewport::render: no %s!\n", missing);
        return;
    }
    if(action == nullptr)
        return;
    action->setTravMask(getTravMask());
    action->apply(getRoot());
}
} // namespace OSG
