#include "OSGChunkMaterial.h"

#include <map>
#include <set>
#include <utility>

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

void ChunkMaterial::addTo(StateParts &parts) const
{
    std::set<std::pair<UInt32, UInt32>> taken; // number of the class, slot
    std::map<UInt32, UInt32> searchedFrom;     // by class: the slots before are taken
    for(UInt32 i = 0; i < _mfChunks.size(); ++i)
    {
        StateChunk const *const chunk = _mfChunks[i];
        if(chunk == nullptr || chunk->getIgnore())
            continue;
        UInt32 const kind = chunk->getChunkId();
        bool const hasSlot = i < _mfSlots.size() && _mfSlots[i] >= 0;
        UInt32 slot = hasSlot ? static_cast<UInt32>(_mfSlots[i]) : searchedFrom[kind];
        if(!taken.insert({kind, slot}).second)
        {
            slot = searchedFrom[kind];
            while(!taken.insert({kind, slot}).second)
                ++slot;
            searchedFrom[kind] = slot + 1;
        }
        chunk->addTo(parts, slot);
    }
}
} // namespace OSG
