#pragma once

#include "OSGBlendChunkBase.h"
#include "OSGDrawState.h"
#include "OSGStateChunkClass.h"

namespace OSG
{
/// Blending with what is drawn already.
class OSG_STATE_API BlendChunk : public BlendChunkBase
{
  public:
    static StateChunkClass const *getStaticClass() { return &_class; }
    static UInt32 getStaticClassId() { return _class.getId(); }

    /// The factors; one that OpenGL does not know is that of a new chunk.
    BlendValues getBlend() const;

    StateChunkClass const *getClass() const override;
    void activate(DrawEnv *env, UInt32 index = 0) override;
    void deactivate(DrawEnv *env, UInt32 index = 0) override;
    /// Always true.
    bool isTransparent() const override;
    /// True for a chunk of the same values.
    bool operator==(StateChunk const &other) const override;
    void addTo(StateParts &parts, UInt32 slot) const override;

  protected:
    BlendChunk() = default;
    BlendChunk(BlendChunk const &) = default;
    ~BlendChunk() override;

    friend Pattern;

  private:
    static StateChunkClass _class;
};
} // namespace OSG
