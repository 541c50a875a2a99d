#include "OSGSimpleMaterial.h"

namespace OSG
{
SimpleMaterial::~SimpleMaterial() = default;
} // namespace OSG
