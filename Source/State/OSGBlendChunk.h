#pragma once

#include "OSGBlendChunkBase.h"

namespace OSG
{
/// Blending factors.
class OSG_STATE_API BlendChunk : public BlendChunkBase
{
  protected:
    BlendChunk() = default;
    BlendChunk(BlendChunk const &) = default;
    ~BlendChunk() override;

    friend Pattern;
};
} // namespace OSG
