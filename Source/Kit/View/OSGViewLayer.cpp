#include "OSGViewLayer.h"

#include <epoxy/gl.h>

#include "OSGTrueSizes.h"

namespace OSG
{
namespace
{
class DepthBackground : public Background
{
  public:
    static TransitPtr<Background> make() { return TransitPtr<Background>(new DepthBackground); }

    void clear() override
    {
        glClearDepth(1);
        glClear(GL_DEPTH_BUFFER_BIT);
    }
};
} // namespace

ViewLayer::ViewLayer(Behind behind)
    : _viewport(EnhPassiveViewport::create())
    , _action(RenderAction::create())
{
    UnrecordedRefPtr<Background> const background(
        behind == Behind::Depths ? Background::create() : DepthBackground::make());
    _viewport->setBackground(background);
    _action->setHeadlight(true);
    keep_true_sizes(*_action);
}

ViewLayer::~ViewLayer() = default;

void ViewLayer::draw(Camera *camera)
{
    if(getRoot() == nullptr)
        return;
    if(_viewport->getCamera() != camera)
        _viewport->setCamera(camera);
    _viewport->render(_action);
}
} // namespace OSG
