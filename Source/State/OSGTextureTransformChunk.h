#pragma once

#include "OSGTextureTransformChunkBase.h"

namespace OSG
{
/// A matrix for texture coordinates.
class OSG_STATE_API TextureTransformChunk : public TextureTransformChunkBase
{
  protected:
    TextureTransformChunk() = default;
    TextureTransformChunk(TextureTransformChunk const &) = default;
    ~TextureTransformChunk() override;

    friend Pattern;
};
} // namespace OSG
