#pragma once

#include "OSGStateChunkClass.h"
#include "OSGTextureTransformChunkBase.h"

namespace OSG
{
/// A matrix for texture coordinates.
class OSG_STATE_API TextureTransformChunk : public TextureTransformChunkBase
{
  public:
    static StateChunkClass const *getStaticClass() { return &_class; }
    static UInt32 getStaticClassId() { return _class.getId(); }

    StateChunkClass const *getClass() const override;
    void activate(DrawEnv *env, UInt32 index = 0) override;
    void deactivate(DrawEnv *env, UInt32 index = 0) override;
    /// True for a chunk of the same values.
    bool operator==(StateChunk const &other) const override;
    void addTo(StateParts &parts, UInt32 slot) const override;

  protected:
    TextureTransformChunk() = default;
    TextureTransformChunk(TextureTransformChunk const &) = default;
    ~TextureTransformChunk() override;

    friend Pattern;

  private:
    static StateChunkClass _class;
};
} // namespace OSG
