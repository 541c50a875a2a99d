#pragma once

#include <vector>

#include "OSGDrawState.h"
#include "OSGMeshPage.h"

namespace OSG
{
class DrawEnv;

/// Brings the current context from one state to the next and remembers what is set, so that only
/// differences reach it. Begins with OpenGL's initial state.
class StateTracker
{
  public:
    /// What of the vertices the current state uses.
    struct VertexUse
    {
        bool normals = false;
        bool colors = false;
        UInt32 texCoords = 0; ///< a bit for each texture unit

        bool operator==(VertexUse const &) const = default;
    };

    explicit StateTracker(DrawEnv &env);

    /// The state for a mesh whose vertices are laid out so. `state` has to live until the next
    /// call.
    void enter(DrawState const &state, VertexLayout layout);
    VertexUse const &use() const { return _use; }
    /// Deactivates the chunks that are active.
    void leave();

  private:
    void setSurface(SurfaceValues const &surface, VertexLayout layout);
    void setLit(SurfaceValues const &surface, bool hasColors);
    void setUnlit(SurfaceValues const &surface, bool hasColors);
    void setLighting(bool isOn);
    void setColorMaterial(UInt32 mode);
    void setTextures(std::vector<TextureValues> const &textures, bool hasNormals);
    void setUnit(UInt32 unit, TextureValues const &texture);
    void setChunks(std::vector<ActiveChunk> const &chunks);

    DrawEnv &_env;
    VertexUse _use;
    bool _isLit = false;
    UInt32 _colorMaterial = 0; // 0: off
    // The material and the colour are not known at first, nor after vertices have brought theirs.
    bool _knowsLit = false;
    bool _knowsUnlit = false;
    SurfaceValues _lit;
    Color4f _unlit;
    BlendValues _blend;
    std::vector<TextureValues> _units;
    std::vector<bool> _unitIsOn;
    UInt32 _mostUnits;
    std::vector<ActiveChunk> const *_chunks = nullptr;
};
} // namespace OSG
