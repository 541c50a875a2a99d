#pragma once

#include "OSGPointLightBase.h"

namespace OSG
{
/// Shines from a point in all directions.
class OSG_GROUP_API PointLight : public PointLightBase
{
  protected:
    PointLight() = default;
    PointLight(PointLight const &) = default;
    ~PointLight() override;

    void addTo(LightValues &values, Matrix const &toEye) const override;

    friend Pattern;
};
} // namespace OSG
