#include "OSGMaterial.h"

namespace OSG
{
Material::~Material() = default;
} // namespace OSG
