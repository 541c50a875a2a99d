#pragma once

#include "OSGStateChunkClass.h"
#include "OSGViewportTranslateChunkBase.h"

namespace OSG
{
/// Shifts what is drawn with this chunk on the screen: `OffsetX` pixels to the right, `OffsetY`
/// pixels up. Width and height of the OpenGL viewport grow by the offsets too, so its right and top
/// edges move twice as far.
///
/// Nothing is kept between the two operations. If the viewport changes while the chunk is active,
/// deactivate works on the changed one.
class OSG_CONTRIBTOLVANITE_API ViewportTranslateChunk : public ViewportTranslateChunkBase
{
  public:
    static StateChunkClass const *getStaticClass() { return &_class; }
    static UInt32 getStaticClassId() { return _class.getId(); }

    StateChunkClass const *getClass() const override;
    /// Adds the offsets to the position and to the size of the OpenGL viewport.
    void activate(DrawEnv *env, UInt32 index = 0) override;
    /// Deactivates `old`, then activates this chunk, even where both are the same one.
    void changeFrom(DrawEnv *env, StateChunk *old, UInt32 index = 0) override;
    /// Takes the offsets away again.
    void deactivate(DrawEnv *env, UInt32 index = 0) override;
    /// Always 0.
    Real32 switchCost(StateChunk *chunk) override;
    /// By address.
    bool operator<(StateChunk const &other) const override;
    /// True for a chunk of this class with the same offsets.
    bool operator==(StateChunk const &other) const override;
    bool operator!=(StateChunk const &other) const override;

  protected:
    ViewportTranslateChunk() = default;
    ViewportTranslateChunk(ViewportTranslateChunk const &) = default;
    ~ViewportTranslateChunk() override;

    friend Pattern;

  private:
    static StateChunkClass _class;
};
} // namespace OSG
