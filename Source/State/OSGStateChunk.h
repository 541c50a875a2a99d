#pragma once

#include "OSGStateChunkBase.h"

namespace OSG
{
/// A part of the state that geometry is drawn with.
class OSG_STATE_API StateChunk : public StateChunkBase
{
  public:
    /// Adds this to the chunks of a material, in the first free slot.
    bool linkParent(FieldContainer *parent, UInt16 fieldId) override;

  protected:
    StateChunk() = default;
    StateChunk(StateChunk const &) = default;
    ~StateChunk() override;

    friend Pattern;
};
} // namespace OSG
