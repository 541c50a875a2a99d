#pragma once

#include "OSGBackground.h"
#include "OSGCamera.h"
#include "OSGNode.h"
#include "OSGViewportBase.h"

namespace OSG
{
/// A view of the scene below `root` through `camera`, in front of `background`.
class OSG_WINDOW_API Viewport : public ViewportBase
{
  public:
    /// Applies `action` to the root with the traversal mask of the view. If the camera, the
    /// background or the root is missing, it only logs a warning that names the first missing one.
    void render(RenderActionBase *action) override;
    /// Appends this viewport to the ports of a window.
    bool linkParent(FieldContainer *parent, UInt16 fieldId) override;

  protected:
    Viewport() = default;
    Viewport(Viewport const &source)
        : ViewportBase(source)
    {
    }
    ~Viewport() override;

    friend Pattern;
};
} // namespace OSG
