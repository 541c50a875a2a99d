#include "OSGLightSource.h"

namespace OSG
{
LightSource::~LightSource() = default;
} // namespace OSG
