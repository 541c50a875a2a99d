#pragma once

#include "OSGStateChunkBase.h"

namespace OSG
{
/// A part of the state that geometry is drawn with.
class OSG_STATE_API StateChunk : public StateChunkBase
{
  protected:
    StateChunk() = default;
    StateChunk(StateChunk const &) = default;
    ~StateChunk() override;

    friend Pattern;
};
} // namespace OSG
