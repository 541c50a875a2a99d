#pragma once

#include "OSGBaseTypes.h"
#include "OSGStateApi.h"

namespace OSG
{
/// A kind of state chunk. Each is a static object that becomes known by being constructed and stays
/// so for as long as the process lives.
class OSG_STATE_API StateChunkClass
{
  public:
    /// `name` is a literal and not copied. Of one kind up to `numSlots` chunks can be active side
    /// by side, as with texture units; kinds of a lower priority are activated first.
    StateChunkClass(char const *name, UInt32 numSlots = 1, UInt32 priority = 100);
    ~StateChunkClass() = default;
    StateChunkClass(StateChunkClass const &) = delete;
    StateChunkClass &operator=(StateChunkClass const &) = delete;

    /// The place of the kind's first slot among those of all kinds; dense.
    UInt32 getId() const { return _id; }
    char const *getName() const { return _name; }
    UInt32 getNumSlots() const { return _numSlots; }
    UInt32 getPriority() const { return _priority; }

    /// Slots of all kinds that are known.
    static UInt32 getTotalSlots();

  private:
    char const *_name;
    UInt32 _id;
    UInt32 _numSlots;
    UInt32 _priority;
};
} // namespace OSG
