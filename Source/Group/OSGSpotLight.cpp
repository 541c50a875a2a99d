#include "OSGSpotLight.h"

#include <algorithm>
#include <numbers>

namespace OSG
{
SpotLight::~SpotLight() = default;

void SpotLight::addTo(LightValues &values, Matrix const &toEye) const
{
    constexpr Real32 Degrees = 180.f / std::numbers::pi_v<Real32>;
    PointLight::addTo(values, toEye);
    values.spotDirection = toEye * getSpotDirection();
    // OpenGL takes cones up to a half space, or none.
    Real32 const cutOff = getSpotCutOff() * Degrees;
    values.spotCutOff = cutOff >= 0 && cutOff <= 90 ? cutOff : 180;
    values.spotExponent = std::clamp(getSpotExponent(), 0.f, 128.f);
}
} // namespace OSG
