#include "OSGStateChunkClass.h"

#include <algorithm>
#include <atomic>

#include "OSGStartUpRecord.h"

namespace OSG
{
namespace
{
std::atomic<UInt32> slots_of_all{
    0}; // constant-initialised, because chunk classes are static objects of any library
} // namespace

StateChunkClass::StateChunkClass(char const *name, UInt32 numSlots, UInt32 priority)
    : _name(name)
    , _id(slots_of_all.fetch_add(std::max(numSlots, 1u)))
    , _numSlots(std::max(numSlots, 1u))
    , _priority(priority)
{
    record_start_up(StartUpKind::StateChunkClass, name);
}

UInt32 StateChunkClass::getTotalSlots() { return slots_of_all; }
} // namespace OSG
