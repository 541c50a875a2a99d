#pragma once

#include "OSGDrawState.h"
#include "OSGMaterialChunkBase.h"
#include "OSGStateChunkClass.h"

namespace OSG
{
/// Colours of a surface.
class OSG_STATE_API MaterialChunk : public MaterialChunkBase
{
  public:
    static StateChunkClass const *getStaticClass() { return &_class; }
    static UInt32 getStaticClassId() { return _class.getId(); }

    /// The values, brought into the ranges that OpenGL takes.
    SurfaceValues getSurface() const;

    StateChunkClass const *getClass() const override;
    void activate(DrawEnv *env, UInt32 index = 0) override;
    void deactivate(DrawEnv *env, UInt32 index = 0) override;
    /// True for a chunk of the same values.
    bool operator==(StateChunk const &other) const override;
    void addTo(StateParts &parts, UInt32 slot) const override;

  protected:
    MaterialChunk() = default;
    MaterialChunk(MaterialChunk const &) = default;
    ~MaterialChunk() override;

    friend Pattern;

  private:
    static StateChunkClass _class;
};
} // namespace OSG
