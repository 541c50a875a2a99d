#pragma once

#include "OSGStateChunkClass.h"
#include "OSGTextureEnvChunkBase.h"

namespace OSG
{
/// How a texture meets the colour below it.
class OSG_STATE_API TextureEnvChunk : public TextureEnvChunkBase
{
  public:
    static StateChunkClass const *getStaticClass() { return &_class; }
    static UInt32 getStaticClassId() { return _class.getId(); }

    /// The mode; one that OpenGL does not know is GLName::Modulate.
    UInt32 getCheckedMode() const;

    StateChunkClass const *getClass() const override;
    void activate(DrawEnv *env, UInt32 index = 0) override;
    void deactivate(DrawEnv *env, UInt32 index = 0) override;
    /// True for a chunk of the same values.
    bool operator==(StateChunk const &other) const override;
    void addTo(StateParts &parts, UInt32 slot) const override;

  protected:
    TextureEnvChunk() = default;
    TextureEnvChunk(TextureEnvChunk const &) = default;
    ~TextureEnvChunk() override;

    friend Pattern;

  private:
    static StateChunkClass _class;
};
} // namespace OSG
