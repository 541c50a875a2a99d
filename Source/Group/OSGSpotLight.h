#pragma once

#include "OSGSpotLightBase.h"

namespace OSG
{
/// A point light that shines in a cone.
class OSG_GROUP_API SpotLight : public SpotLightBase
{
  protected:
    SpotLight() = default;
    SpotLight(SpotLight const &) = default;
    ~SpotLight() override;

    friend Pattern;
};
} // namespace OSG
