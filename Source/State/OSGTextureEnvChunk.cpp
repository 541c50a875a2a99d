#include "OSGTextureEnvChunk.h"

namespace OSG
{
TextureEnvChunk::~TextureEnvChunk() = default;
} // namespace OSG
