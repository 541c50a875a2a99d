#pragma once

#include "OSGPointLightBase.h"

namespace OSG
{
/// A light from a point.
class OSG_GROUP_API PointLight : public PointLightBase
{
  protected:
    PointLight() = default;
    PointLight(PointLight const &) = default;
    ~PointLight() override;

    friend Pattern;
};
} // namespace OSG
