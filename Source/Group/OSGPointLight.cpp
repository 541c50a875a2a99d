#include "OSGPointLight.h"

namespace OSG
{
PointLight::~PointLight() = default;
} // namespace OSG
