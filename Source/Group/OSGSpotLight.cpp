#include "OSGSpotLight.h"

namespace OSG
{
SpotLight::~SpotLight() = default;
} // namespace OSG
