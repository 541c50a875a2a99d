#pragma once

#include "OSGTextureObjChunkBase.h"

namespace OSG
{
/// A texture from an image.
class OSG_STATE_API TextureObjChunk : public TextureObjChunkBase
{
  protected:
    TextureObjChunk() = default;
    TextureObjChunk(TextureObjChunk const &) = default;
    ~TextureObjChunk() override;

    friend Pattern;
};
} // namespace OSG
