#pragma once

#include "OSGDirectionalLightBase.h"

namespace OSG
{
/// Shines from infinitely far, from where `direction` points.
class OSG_GROUP_API DirectionalLight : public DirectionalLightBase
{
  protected:
    DirectionalLight() = default;
    DirectionalLight(DirectionalLight const &) = default;
    ~DirectionalLight() override;

    void addTo(LightValues &values, Matrix const &toEye) const override;

    friend Pattern;
};
} // namespace OSG
