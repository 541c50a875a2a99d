#pragma once

#include "OSGEnhPassiveViewportBase.h"

namespace OSG
{
/// A viewport for hosts that own the OpenGL context and set up the OpenGL viewport themselves. Its
/// edges are those of the OpenGL viewport that render() found last.
class OSG_CONTRIBTOLVANITE_API EnhPassiveViewport : public EnhPassiveViewportBase
{
  public:
    /// Takes its edges from the OpenGL viewport and draws the scene over this area. If the camera,
    /// the background or the root is missing, it only logs a warning that names the first missing
    /// one, and the edges stay. So they do, with a warning, without a context to draw in.
    void render(RenderActionBase *action) override;
    /// Always true: the host decides where the view lies in the window.
    bool isPassive() const override;
    /// Makes the area of the edges the OpenGL viewport. Nothing is cleared or cut off.
    void activateSize() override;

  protected:
    EnhPassiveViewport() = default;
    EnhPassiveViewport(EnhPassiveViewport const &) = default;
    ~EnhPassiveViewport() override;

    friend Pattern;
};
} // namespace OSG
