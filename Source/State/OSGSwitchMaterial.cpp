#include "OSGSwitchMaterial.h"

namespace OSG
{
SwitchMaterial::~SwitchMaterial() = default;
} // namespace OSG
