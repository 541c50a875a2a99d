#include "OSGChunkMaterial.h"

#include <algorithm>

namespace OSG
{
ChunkMaterial::~ChunkMaterial() = default;

StateChunk *ChunkMaterial::find(FieldContainerType const &type, Int32 slot) const
{
    for(UInt32 i = 0; i < _mfChunks.size(); ++i)
    {
        if(_mfChunks[i] != nullptr && _mfChunks[i]->getType() == type &&
           (slot == AutoSlot || (i < _mfSlots.size() && _mfSlots[i] == slot)))
            return _mfChunks[i];
    }
    return nullptr;
}

bool ChunkMaterial::addChunk(StateChunk *chunk, Int32 slot)
{
    if(chunk == nullptr)
        return false;
    if(slot == AutoSlot)
    {
        slot = 0;
        while(find(chunk->getType(), slot) != nullptr)
            ++slot;
    }
    else if(find(chunk->getType(), slot) != nullptr)
        return false;
    markEdited(ChunksFieldMask | SlotsFieldMask);
    // The slot goes in first, and out again where the chunk fails, so that a chunk always has a
    // slot.
    _mfSlots.push_back(slot);
    try
    {
        _mfChunks.push_back(chunk);
    }
    catch(...)
    {
        _mfSlots.pop_back();
        throw;
    }
    return true;
}

bool ChunkMaterial::subChunk(StateChunk *chunk)
{
    return chunk != nullptr && unlinkChild(chunk, ChunksFieldId);
}

bool ChunkMaterial::unlinkChild(FieldContainer *child, UInt16 fieldId)
{
    Int32 const index = fieldId == ChunksFieldId ? _mfChunks.findIndex(child) : -1;
    if(index < 0)
        return ChunkMaterialBase::unlinkChild(child, fieldId);
    markEdited(ChunksFieldMask | SlotsFieldMask);
    _mfChunks.erase(static_cast<UInt32>(index));
    if(static_cast<UInt32>(index) < _mfSlots.size())
        _mfSlots.erase(_mfSlots.begin() + index);
    return true;
}
} // namespace OSG
