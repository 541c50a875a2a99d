#include "OSGStateParts.h"

#include <algorithm>

#include "OSGImage.h"
#include "OSGStateChunk.h"
#include "OSGStateChunkClass.h"

namespace OSG
{
void StateParts::setChunk(StateChunk &chunk, UInt32 slot)
{
    StateChunkClass const &kind = *chunk.getClass();
    if(slot >= kind.getNumSlots())
        return;
    put(_chunks, ActiveChunk{&chunk, chunk.getChunkId() + slot, kind.getPriority(), slot},
        chunk.getChunkId() + slot);
}

std::vector<TextureValues> StateParts::resolveTextures() const
{
    std::vector<TextureValues> units;
    for(std::size_t rank = 0; rank < _textures.size(); ++rank)
    {
        TextureValues unit;
        if(_textures[rank].second.image != nullptr)
        {
            unit = _textures[rank].second;
            unit.envMode =
                rank < _environments.size() ? _environments[rank].second : GLName::Modulate;
            unit.transform = rank < _transforms.size() ? _transforms[rank].second : Matrix();
            unit.isTransformed = !(unit.transform == Matrix());
        }
        units.push_back(unit);
    }
    while(!units.empty() && units.back().image == nullptr)
        units.pop_back();
    return units;
}

DrawState StateParts::resolve() const
{
    DrawState state;
    if(!_surfaces.empty())
        state.surface = _surfaces.front().second;
    if(!_blends.empty())
        state.blend = _blends.front().second;
    state.textures = resolveTextures();
    for(TextureValues const &unit : state.textures)
    {
        bool const hasAlpha =
            unit.image != nullptr && unit.image->hasAlpha() && !unit.image->getPixel().empty();
        if(hasAlpha && unit.image->getForceAlphaBinary())
            state.blend.dropsLowAlpha = true;
        else if(hasAlpha)
            state.blend.isOn = true;
    }
    for(auto const &[slot, active] : _chunks)
    {
        state.chunks.push_back(active);
        if(active.chunk->isTransparent())
            state.blend.isOn = true;
    }
    std::stable_sort(state.chunks.begin(), state.chunks.end(),
                     [](ActiveChunk const &a, ActiveChunk const &b)
                     { return a.priority < b.priority; });
    // What is blended shows low alpha as it is.
    if(state.blend.isOn)
        state.blend.dropsLowAlpha = false;
    return state;
}
} // namespace OSG
