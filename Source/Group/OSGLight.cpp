#include "OSGLight.h"

namespace OSG
{
Light::~Light() = default;
} // namespace OSG
