#pragma once

#include "OSGDrawState.h"
#include "OSGStateChunkClass.h"
#include "OSGTextureObjChunkBase.h"

namespace OSG
{
/// A texture from an image. Textures of one material drive the units 0, 1, ... in the order of
/// their slots.
class OSG_STATE_API TextureObjChunk : public TextureObjChunkBase
{
  public:
    static StateChunkClass const *getStaticClass() { return &_class; }
    static UInt32 getStaticClassId() { return _class.getId(); }

    /// The image and the settings; one that OpenGL does not know is that of a new chunk.
    TextureValues getTexture() const;

    StateChunkClass const *getClass() const override;
    void activate(DrawEnv *env, UInt32 index = 0) override;
    void deactivate(DrawEnv *env, UInt32 index = 0) override;
    /// Makes the texture, where there is a store of objects in `env`.
    void updateObjectDependencies(DrawEnv *env, UInt32 index = 0) override;
    /// True where the image has alpha that is blended.
    bool isTransparent() const override;
    /// True for a chunk of the same values.
    bool operator==(StateChunk const &other) const override;
    void addTo(StateParts &parts, UInt32 slot) const override;

  protected:
    TextureObjChunk() = default;
    TextureObjChunk(TextureObjChunk const &) = default;
    ~TextureObjChunk() override;

    friend Pattern;

  private:
    static StateChunkClass _class;
};
} // namespace OSG
