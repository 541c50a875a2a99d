#pragma once

#include "OSGChunkMaterialBase.h"

namespace OSG
{
/// A material put together from chunks. Chunks of one type are told apart by their slots.
class OSG_STATE_API ChunkMaterial : public ChunkMaterialBase
{
  public:
    static constexpr Int32 AutoSlot = -1;

    /// Adds a chunk. A slot that another chunk of the same type has is refused; AutoSlot takes the
    /// first free one. False for null and for a refused chunk.
    bool addChunk(StateChunk *chunk, Int32 slot = AutoSlot);
    /// Takes it out; false where it is not in there.
    bool subChunk(StateChunk *chunk);
    /// The chunk of exactly that type in that slot, in any for AutoSlot; null where there is none.
    StateChunk *find(FieldContainerType const &type, Int32 slot = AutoSlot) const;
    bool unlinkChild(FieldContainer *child, UInt16 fieldId) override;

  protected:
    ChunkMaterial() = default;
    ChunkMaterial(ChunkMaterial const &) = default;
    ~ChunkMaterial() override;

    friend Pattern;
};
} // namespace OSG
