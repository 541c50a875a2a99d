#pragma once

#include "OSGSimpleMaterialBase.h"

namespace OSG
{
/// A material of plain colours. Where its transparency is above 0 it is blended.
class OSG_STATE_API SimpleMaterial : public SimpleMaterialBase
{
  public:
    /// The surface in slot 0, and blending in slot 0 where the material is transparent.
    void addTo(StateParts &parts) const override;

  protected:
    SimpleMaterial() = default;
    SimpleMaterial(SimpleMaterial const &) = default;
    ~SimpleMaterial() override;

    friend Pattern;
};
} // namespace OSG
