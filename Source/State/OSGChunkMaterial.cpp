#include "OSGChunkMaterial.h"

#include <algorithm>

namespace OSG
{
ChunkMaterial::~ChunkMaterial() = default;

StateChunk *ChunkMaterial::find(FieldContainerType const &type, Int32 slot) const
{
    for(UInt32 i = 0; i < _mfChunks.size(); ++i)
    {
        if(_mfChunks[i]->getType() == type && (slot == AutoSlot || _mfSlots[i] == slot))
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
    _mfChunks.push_back(chunk);
    _mfSlots.push_back(slot);
    return true;
}

bool ChunkMaterial::subChunk(StateChunk *chunk)
{
    Int32 const index = _mfChunks.findIndex(chunk);
    if(index < 0)
        return false;
    markEdited(ChunksFieldMask | SlotsFieldMask);
    _mfChunks.erase(static_cast<UInt32>(index));
    _mfSlots.erase(_mfSlots.begin() + index);
    return true;
}
} // namespace OSG
