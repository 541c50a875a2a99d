#include "OSGShownView.h"

#include "OSGViewport.h"

namespace OSG
{
ShownView shown_view_of(Viewport const &viewport)
{
    ShownView view;
    view.left = viewport.calcPixelLeft();
    view.bottom = viewport.calcPixelBottom();
    view.width = viewport.calcPixelWidth();
    view.height = viewport.calcPixelHeight();
    view.root = viewport.getRoot();
    view.camera = viewport.getCamera();
    view.background = viewport.getBackground();
    if(view.camera == nullptr)
        return view;
    UInt32 const width = static_cast<UInt32>(view.width);
    UInt32 const height = static_cast<UInt32>(view.height);
    Matrix shift;
    view.camera->getViewing(view.viewing, width, height);
    view.camera->getProjection(view.projection, width, height);
    view.camera->getProjectionTranslation(shift, width, height);
    view.projection.mult(shift);
    return view;
}
} // namespace OSG
