#pragma once

#include "OSGEnhPassiveViewport.h"
#include "OSGRenderAction.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// A tree that is drawn over what another viewport has drawn, through the same camera and over the
/// same pixels, by an action of its own and by a light at the eye. One unit below a
/// ConstantSizeTransform is one pixel everywhere in the window.
class OSG_TOLVANITEKIT_API ViewLayer
{
  public:
    /// What the layer finds in the frame buffer.
    enum class Behind
    {
        Depths, ///< what was drawn before hides what lies deeper
        Nothing ///< colours stay and hide nothing
    };

    explicit ViewLayer(Behind behind = Behind::Depths);
    ~ViewLayer();
    ViewLayer(ViewLayer const &) = delete;
    ViewLayer &operator=(ViewLayer const &) = delete;

    /// Keeps a reference. Null draws nothing.
    void setRoot(Node *root) { _viewport->setRoot(root); }
    Node *getRoot() const { return _viewport->getRoot(); }
    RenderAction *getRenderAction() const { return _action; }
    EnhPassiveViewport *getViewport() const { return _viewport; }

    /// Draws over the OpenGL viewport of the current context.
    void draw(Camera *camera);

  private:
    UnrecordedRefPtr<EnhPassiveViewport> _viewport;
    UnrecordedRefPtr<RenderAction> _action;
};
} // namespace OSG
