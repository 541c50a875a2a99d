#pragma once

#include "OSGEnhPassiveViewportBase.h"

namespace OSG
{
/// A viewport for hosts that own the OpenGL context and set up the OpenGL viewport themselves.
class OSG_CONTRIBTOLVANITE_API EnhPassiveViewport : public EnhPassiveViewportBase
{
  public:
    /// Always true: the host decides where the view lies in the window.
    bool isPassive() const override;

  protected:
    EnhPassiveViewport() = default;
    EnhPassiveViewport(EnhPassiveViewport const &) = default;
    ~EnhPassiveViewport() override;

    friend Pattern;
};
} // namespace OSG
