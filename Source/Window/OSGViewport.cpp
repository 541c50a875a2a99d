#include "OSGViewport.h"

#include "OSGLog.h"
#include "OSGRenderActionBase.h"
#include "OSGWindow.h"

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

bool Viewport::linkParent(FieldContainer *parent, UInt16 fieldId)
{
    auto *const window = fieldId == Window::PortsFieldId ? dynamic_cast<Window *>(parent) : nullptr;
    if(window == nullptr)
        return ViewportBase::linkParent(parent, fieldId);
    window->addPort(this);
    return true;
}
} // namespace OSG
