#pragma once

#include "OSGMaterialBase.h"

namespace OSG
{
class StateParts;

/// What geometry looks like.
class OSG_STATE_API Material : public MaterialBase
{
  public:
    /// Says in `parts` what the material means for drawing.
    virtual void addTo(StateParts &parts) const = 0;

  protected:
    Material() = default;
    Material(Material const &) = default;
    ~Material() override;

    friend Pattern;
};
} // namespace OSG
