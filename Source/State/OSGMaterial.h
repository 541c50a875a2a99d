#pragma once

#include "OSGMaterialBase.h"

namespace OSG
{
/// What geometry looks like; geometries share materials.
class OSG_STATE_API Material : public MaterialBase
{
  protected:
    Material() = default;
    Material(Material const &) = default;
    ~Material() override;

    friend Pattern;
};
} // namespace OSG
