#include "OSGStateTracker.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "OSGChunkCalls.h"
#include "OSGDrawEnv.h"
#include "OSGGLObjectStore.h"
#include "OSGLog.h"
#include "OSGStateChunk.h"
#include "OSGTextureStore.h"

namespace OSG
{
StateTracker::StateTracker(DrawEnv &env)
    : _env(env)
{
    GLint units = 1;
    GLint coordinates = 1;
    glGetIntegerv(GL_MAX_TEXTURE_UNITS, &units);
    glGetIntegerv(GL_MAX_TEXTURE_COORDS, &coordinates);
    constexpr GLint MostBits = 32; // of VertexUse::texCoords
    _mostUnits = static_cast<UInt32>(std::clamp(std::min(units, coordinates), 1, MostBits));
}

void StateTracker::enter(DrawState const &state, VertexLayout layout)
{
    static std::vector<TextureValues> const none;
    bool const hasTexCoords = layout.has(VertexLayout::TexCoords);
    setSurface(state.surface, layout);
    setTextures(hasTexCoords ? state.textures : none, layout.has(VertexLayout::Normals));
    BlendValues blend = state.blend;
    blend.dropsLowAlpha = blend.dropsLowAlpha && hasTexCoords;
    if(!(blend == _blend))
        set_blend(blend);
    _blend = blend;
    setChunks(state.chunks);
}

void StateTracker::leave()
{
    static std::vector<ActiveChunk> const none;
    setChunks(none);
}

// --- colours ---

void StateTracker::setSurface(SurfaceValues const &surface, VertexLayout layout)
{
    bool const hasNormals = layout.has(VertexLayout::Normals);
    bool const hasColors = layout.has(VertexLayout::Colors) && surface.colorMaterial != 0;
    bool const isLit = surface.lit && hasNormals;
    if(isLit)
        setLit(surface, hasColors);
    else
        setUnlit(surface, hasColors && is_unlit_color(surface.colorMaterial));
    setLighting(isLit);
    _use.normals = isLit;
}

// The colours of vertices are copied into the material while the colour material is on, and stay
// there.
void StateTracker::setLit(SurfaceValues const &surface, bool hasColors)
{
    if(_knowsLit && _lit == surface && _use.colors == hasColors && _isLit &&
       _colorMaterial == (hasColors ? surface.colorMaterial : 0))
        return;
    setColorMaterial(0);
    if(!_knowsLit || !(_lit == surface))
        set_lit_surface(surface, _knowsLit ? &_lit : nullptr);
    _lit = surface;
    _knowsLit = !hasColors;
    if(hasColors)
    {
        setColorMaterial(surface.colorMaterial);
        _knowsUnlit = false;
    }
    _use.colors = hasColors;
}

void StateTracker::setUnlit(SurfaceValues const &surface, bool hasColors)
{
    setColorMaterial(0);
    if(!hasColors && (!_knowsUnlit || !(_unlit == surface.diffuse)))
        set_unlit_surface(surface);
    _unlit = surface.diffuse;
    _knowsUnlit = !hasColors;
    _use.colors = hasColors;
}

void StateTracker::setLighting(bool isOn)
{
    if(_isLit == isOn)
        return;
    if(isOn)
        glEnable(GL_LIGHTING);
    else
        glDisable(GL_LIGHTING);
    _isLit = isOn;
}

void StateTracker::setColorMaterial(UInt32 mode)
{
    if(_colorMaterial == mode)
        return;
    if(mode != 0)
    {
        glColorMaterial(GL_FRONT_AND_BACK, mode);
        glEnable(GL_COLOR_MATERIAL);
    }
    else
        glDisable(GL_COLOR_MATERIAL);
    _colorMaterial = mode;
}

// --- textures ---

void StateTracker::setTextures(std::vector<TextureValues> const &textures, bool hasNormals)
{
    if(textures.size() > _mostUnits && _env.getObjects()->textures().isFirstExcess())
        OSG_LOG_WARNING("A material has %zu textures, the driver draws %u\n", textures.size(),
                        _mostUnits);
    std::size_t const wanted = std::min<std::size_t>(textures.size(), _mostUnits);
    if(_units.size() < wanted)
    {
        _units.resize(wanted);
        _unitIsOn.resize(wanted);
    }
    for(std::size_t i = 0; i < _units.size(); ++i)
    {
        TextureValues const off;
        TextureValues const &texture = i < wanted ? textures[i] : off;
        if(!(texture == _units[i]))
            setUnit(static_cast<UInt32>(i), texture);
    }
    _use.texCoords = 0;
    for(std::size_t i = 0; i < _units.size(); ++i)
    {
        if(_unitIsOn[i] && _units[i].isSphereMap)
            _use.normals = hasNormals;
        else if(_unitIsOn[i])
            _use.texCoords |= UInt32(1) << i;
    }
}

void StateTracker::setUnit(UInt32 unit, TextureValues const &texture)
{
    TextureValues &former = _units[unit];
    glActiveTexture(GL_TEXTURE0 + unit);
    _unitIsOn[unit] = set_texture(_env.getObjects()->textures(), texture);
    if(texture.envMode != former.envMode)
        set_environment(texture.envMode);
    if(texture.isSphereMap != former.isSphereMap)
        set_sphere_map(texture.isSphereMap);
    if(texture.isTransformed || former.isTransformed)
        set_texture_transform(texture.transform);
    former = texture;
}

// --- chunks that act by themselves ---

// Both lists are in the order of priority, then of slots. A slot that both have is changed over,
// the others are left and entered.
void StateTracker::setChunks(std::vector<ActiveChunk> const &chunks)
{
    static std::vector<ActiveChunk> const none;
    std::vector<ActiveChunk> const &former = _chunks != nullptr ? *_chunks : none;
    if(&former == &chunks || former == chunks)
    {
        _chunks = &chunks;
        return;
    }
    auto const findSlot = [](std::vector<ActiveChunk> const &list, UInt32 slot)
    {
        auto const at =
            std::find_if(list.begin(), list.end(),
                         [slot](ActiveChunk const &chunk) { return chunk.classId == slot; });
        return at != list.end() ? at->chunk : nullptr;
    };
    for(auto old = former.rbegin(); old != former.rend(); ++old)
    {
        if(findSlot(chunks, old->classId) == nullptr)
            old->chunk->deactivate(&_env, old->index);
    }
    for(ActiveChunk const &chunk : chunks)
    {
        StateChunk *const old = findSlot(former, chunk.classId);
        if(old == nullptr)
            chunk.chunk->activate(&_env, chunk.index);
        else if(old != chunk.chunk)
            chunk.chunk->changeFrom(&_env, old, chunk.index);
    }
    _chunks = &chunks;
}
} // namespace OSG
