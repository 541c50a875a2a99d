#pragma once

#include "OSGChunkMaterialBase.h"

namespace OSG
{
/// A material put together from chunks. Chunks of one type are told apart by their slots.
class OSG_STATE_API ChunkMaterial : public ChunkMaterialBase
{
  public:
    static constexpr Int32 AutoSlot = -2;

    /// Adds a chunk in `slot`; AutoSlot takes the first free slot. Returns false, and adds nothing,
    /// for null and where another chunk of the same type has the slot.
    bool addChunk(StateChunk *chunk, Int32 slot = AutoSlot);
    /// Removes a chunk. False where the material does not have it.
    bool subChunk(StateChunk *chunk);
    /// The chunk of exactly that type in that slot. AutoSlot finds it in any slot. Null where there
    /// is none.
    StateChunk *find(FieldContainerType const &type, Int32 slot = AutoSlot) const;
    bool unlinkChild(FieldContainer *child, UInt16 fieldId) override;
    /// Chunks that are ignored add nothing. A chunk that has no slot, or one that another chunk of
    /// its class has, counts in the first free slot.
    void addTo(StateParts &parts) const override;

  protected:
    ChunkMaterial() = default;
    ChunkMaterial(ChunkMaterial const &) = default;
    ~ChunkMaterial() override;

    friend Pattern;
};
} // namespace OSG
