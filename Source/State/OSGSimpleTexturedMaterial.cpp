#include "OSGSimpleTexturedMaterial.h"

namespace OSG
{
SimpleTexturedMaterial::~SimpleTexturedMaterial() = default;
} // namespace OSG
