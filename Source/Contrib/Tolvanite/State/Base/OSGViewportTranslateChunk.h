#pragma once

#include "OSGStateChunkClass.h"
#include "OSGViewportTranslateChunkBase.h"

namespace OSG
{
/// Shifts what is drawn with this chunk on the screen: `OffsetX` pixels to the right, `OffsetY`
/// pixels up.
class OSG_CONTRIBTOLVANITE_API ViewportTranslateChunk : public ViewportTranslateChunkBase
{
  public:
    static StateChunkClass const *getStaticClass() { return &_class; }
    static UInt32 getStaticClassId() { return _class.getId(); }

    StateChunkClass const *getClass() const override;

  protected:
    ViewportTranslateChunk() = default;
    ViewportTranslateChunk(ViewportTranslateChunk const &) = default;
    ~ViewportTranslateChunk() override;

    friend Pattern;

  private:
    static StateChunkClass _class;
};
} // namespace OSG
