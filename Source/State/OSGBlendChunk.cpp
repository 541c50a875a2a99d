#include "OSGBlendChunk.h"

namespace OSG
{
BlendChunk::~BlendChunk() = default;
} // namespace OSG
