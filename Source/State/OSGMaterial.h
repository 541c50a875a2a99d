#pragma once

#include "OSGMaterialBase.h"

namespace OSG
{
class StateParts;

/// What geometry looks like.
class OSG_STATE_API Material : public MaterialBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    void changed(BitVector whichField, UInt32 origin, BitVector details) override;
    /// Says in `parts` what the material means for drawing.
    virtual void addTo(StateParts &parts) const = 0;

  protected:
    Material() = default;
    Material(Material const &) = default;
    ~Material() override;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;
};
} // namespace OSG
