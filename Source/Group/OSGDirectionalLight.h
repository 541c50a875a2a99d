#pragma once

#include "OSGDirectionalLightBase.h"

namespace OSG
{
/// A light from infinitely far.
class OSG_GROUP_API DirectionalLight : public DirectionalLightBase
{
  protected:
    DirectionalLight() = default;
    DirectionalLight(DirectionalLight const &) = default;
    ~DirectionalLight() override;

    friend Pattern;
};
} // namespace OSG
