#include "OSGStateChunk.h"

namespace OSG
{
StateChunk::~StateChunk() = default;
} // namespace OSG
