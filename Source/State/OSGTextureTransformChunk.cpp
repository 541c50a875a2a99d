#include "OSGTextureTransformChunk.h"

namespace OSG
{
TextureTransformChunk::~TextureTransformChunk() = default;
} // namespace OSG
