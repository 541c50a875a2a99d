#pragma once

#include "OSGMaterialChunkBase.h"

namespace OSG
{
/// Colours that light falls on; the alpha of the diffuse colour is the opacity.
class OSG_STATE_API MaterialChunk : public MaterialChunkBase
{
  protected:
    MaterialChunk() = default;
    MaterialChunk(MaterialChunk const &) = default;
    ~MaterialChunk() override;

    friend Pattern;
};
} // namespace OSG
