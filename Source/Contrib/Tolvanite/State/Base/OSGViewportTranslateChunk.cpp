#include "OSGViewportTranslateChunk.h"

namespace OSG
{
ViewportTranslateChunk::~ViewportTranslateChunk() = default;

StateChunkClass const *ViewportTranslateChunk::getClass() const { return &_class; }
} // namespace OSG
