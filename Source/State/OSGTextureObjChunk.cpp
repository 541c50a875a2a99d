#include "OSGTextureObjChunk.h"

namespace OSG
{
TextureObjChunk::~TextureObjChunk() = default;
} // namespace OSG
