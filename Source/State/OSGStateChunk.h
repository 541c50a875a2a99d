#pragma once

#include "OSGStateChunkBase.h"

namespace OSG
{
/// A part of the graphics state in which geometry is drawn.
class OSG_STATE_API StateChunk : public StateChunkBase
{
  public:
    /// Where `parent` is a ChunkMaterial, adds this to its chunks in the first free slot.
    bool linkParent(FieldContainer *parent, UInt16 fieldId) override;

  protected:
    StateChunk() = default;
    StateChunk(StateChunk const &) = default;
    ~StateChunk() override;

    friend Pattern;
};
} // namespace OSG
