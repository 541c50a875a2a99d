#pragma once

#include "OSGTextureEnvChunkBase.h"

namespace OSG
{
/// How a texture meets the colour below it.
class OSG_STATE_API TextureEnvChunk : public TextureEnvChunkBase
{
  protected:
    TextureEnvChunk() = default;
    TextureEnvChunk(TextureEnvChunk const &) = default;
    ~TextureEnvChunk() override;

    friend Pattern;
};
} // namespace OSG
