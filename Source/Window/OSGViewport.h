#pragma once

#include "OSGBackground.h"
#include "OSGCamera.h"
#include "OSGNode.h"
#include "OSGViewportBase.h"

namespace OSG
{
class RenderAction;

/// A view of the scene below `root` through `camera`, in front of `background`.
class OSG_WINDOW_API Viewport : public ViewportBase
{
  public:
    /// Applies `action` to the root with the traversal mask of the view. If the camera, the
    /// background or the root is missing, it only logs a warning that names the first missing one.
    ///
    /// A RenderAction gets the view before, and what it has collected is then drawn in front of the
    /// background, in the current context. Its state, but for what was drawn, is afterwards as the
    /// host left it. Where nothing can be drawn in that context (gl_refusal()), one warning is
    /// logged.
    void render(RenderActionBase *action) override;
    /// Appends this viewport to the ports of a window.
    bool linkParent(FieldContainer *parent, UInt16 fieldId) override;

  protected:
    /// What is not there and has to be: "camera", "background" or "root", the first of them; null
    /// where all are.
    char const *findMissing() const;

    Viewport() = default;
    Viewport(Viewport const &source)
        : ViewportBase(source)
    {
    }
    ~Viewport() override;

    friend Pattern;

  private:
    void setView(RenderAction &action) const;
    void draw(RenderAction &action);
    void clearBackground();
};
} // namespace OSG
