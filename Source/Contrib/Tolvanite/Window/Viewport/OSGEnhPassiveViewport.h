#pragma once

#include "OSGEnhPassiveViewportBase.h"

namespace OSG
{
/// A viewport for hosts that own the OpenGL context and have set its viewport up themselves.
class OSG_CONTRIBTOLVANITE_API EnhPassiveViewport : public EnhPassiveViewportBase
{
  public:
    /// True: the host decides about the extent.
    bool isPassive() const override;

  protected:
    EnhPassiveViewport() = default;
    EnhPassiveViewport(EnhPassiveViewport const &) = default;
    ~EnhPassiveViewport() override;

    friend Pattern;
};
} // namespace OSG
