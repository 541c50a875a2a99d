#include "OSGSpotLight.h"

#include <numbers>

namespace OSG
{
SpotLight::~SpotLight() = default;

void SpotLight::addTo(LightValues &values, Matrix const &toEye) const
{
    constexpr Real32 Degrees = 180.f / std::numbers::pi_v<Real32>;
    PointLight::addTo(values, toEye);
    values.spotDirection = toEye * getSpotDirection();
    values.spotCutOff = getSpotCutOff() * Degrees;
    values.spotExponent = getSpotExponent();
}
} // namespace OSG
