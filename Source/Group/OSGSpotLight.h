#pragma once

#include "OSGSpotLightBase.h"

namespace OSG
{
/// Shines from a point in a cone.
class OSG_GROUP_API SpotLight : public SpotLightBase
{
  protected:
    SpotLight() = default;
    SpotLight(SpotLight const &) = default;
    ~SpotLight() override;

    void addTo(LightValues &values, Matrix const &toEye) const override;

    friend Pattern;
};
} // namespace OSG
