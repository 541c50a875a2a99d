#include "OSGMaterialChunk.h"

namespace OSG
{
MaterialChunk::~MaterialChunk() = default;
} // namespace OSG
