#pragma once

#include "OSGSwitchMaterialBase.h"

namespace OSG
{
/// One of several materials, by index.
class OSG_STATE_API SwitchMaterial : public SwitchMaterialBase
{
  public:
    /// The material that counts, through switch materials that are chosen themselves. Null where a
    /// choice is out of range, a material is missing, or the choices lead in a circle.
    Material const *findChosen() const;
    void addTo(StateParts &parts) const override;

  protected:
    SwitchMaterial() = default;
    SwitchMaterial(SwitchMaterial const &) = default;
    ~SwitchMaterial() override;

    friend Pattern;

  private:
    Material const *getChosen() const;
};
} // namespace OSG
