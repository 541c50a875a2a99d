#include "OSGMaterialGroup.h"

namespace OSG
{
MaterialGroup::~MaterialGroup() = default;
} // namespace OSG
