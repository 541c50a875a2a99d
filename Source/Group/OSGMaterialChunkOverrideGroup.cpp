#include "OSGMaterialChunkOverrideGroup.h"

namespace OSG
{
MaterialChunkOverrideGroup::~MaterialChunkOverrideGroup() = default;
} // namespace OSG
