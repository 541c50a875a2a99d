#include "OSGViewportTranslateChunk.h"

namespace OSG
{
ViewportTranslateChunk::~ViewportTranslateChunk() = default;
} // namespace OSG
