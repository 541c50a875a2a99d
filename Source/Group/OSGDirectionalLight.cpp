#include "OSGDirectionalLight.h"

namespace OSG
{
DirectionalLight::~DirectionalLight() = default;
} // namespace OSG
