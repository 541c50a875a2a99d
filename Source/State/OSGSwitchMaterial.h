#pragma once

#include "OSGSwitchMaterialBase.h"

namespace OSG
{
/// One of several materials, by index.
class OSG_STATE_API SwitchMaterial : public SwitchMaterialBase
{
  protected:
    SwitchMaterial() = default;
    SwitchMaterial(SwitchMaterial const &) = default;
    ~SwitchMaterial() override;

    friend Pattern;
};
} // namespace OSG
