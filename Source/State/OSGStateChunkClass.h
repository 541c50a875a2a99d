#pragma once

#include "OSGBaseTypes.h"
#include "OSGStateApi.h"

namespace OSG
{
/// Slots of the chunks that drive texture units.
inline constexpr UInt32 TextureSlots = 16;

/// A kind of state chunk. Each is a static object. Its constructor registers it for the life of the
/// process.
class OSG_STATE_API StateChunkClass
{
  public:
    /// `name` is a literal and is not copied. Up to `numSlots` chunks of the kind can be active at
    /// once, as with texture units. Kinds of a lower priority are activated first.
    StateChunkClass(char const *name, UInt32 numSlots = 1, UInt32 priority = 100);
    ~StateChunkClass() = default;
    StateChunkClass(StateChunkClass const &) = delete;
    StateChunkClass &operator=(StateChunkClass const &) = delete;

    /// The number of the kind's first slot, counted over the slots of all kinds.
    UInt32 getId() const { return _id; }
    char const *getName() const { return _name; }
    UInt32 getNumSlots() const { return _numSlots; }
    UInt32 getPriority() const { return _priority; }

    /// Number of slots of all kinds.
    static UInt32 getTotalSlots();

  private:
    char const *_name;
    UInt32 _id;
    UInt32 _numSlots;
    UInt32 _priority;
};
} // namespace OSG
