#pragma once

/// \file
/// What the copies of one container in the aspects have in common.

#include <atomic>
#include <vector>

#include "OSGMemManager.h"
#include "OSGSystemApi.h"

namespace OSG
{
class FieldContainer;

/// Holds a container's copy of each aspect. Counted by the copies; guarded by a lock of its own, so
/// that threads of different aspects may ask at once.
class OSG_SYSTEM_API AspectStore : public MemObject
{
  public:
    AspectStore() = default;
    AspectStore(AspectStore const &) = delete;
    AspectStore &operator=(AspectStore const &) = delete;

    /// Null for an aspect that has no copy.
    FieldContainer *getPtr(UInt32 aspect) const;
    void setPtrForAspect(FieldContainer *container, UInt32 aspect);
    /// The aspect that `container` is the copy of; NoAspect where it is not one of the copies.
    UInt32 aspectOf(FieldContainer const *container) const;
    /// Takes `container` out of the aspect that it is the copy of. True for the one call that took
    /// the last copy out.
    bool removePtr(FieldContainer const *container);

    static constexpr UInt32 NoAspect = ~UInt32(0);

    void addRef();
    /// Ends the store with the last reference.
    void release();
    Int32 getRefCount() const { return _references.load(std::memory_order_relaxed); }

    void lock() const;
    void unlock() const;

    /// Byte distances from `container` to its copies, one entry per aspect; 0 where there is none.
    void fillOffsetArray(std::vector<Int64> &offsets, FieldContainer *container) const;

  private:
    ~AspectStore() = default;
    UInt32 findAspect(FieldContainer const *container) const;

    // Nearly every container lives in aspect 0 alone.
    FieldContainer *_first = nullptr;
    std::vector<FieldContainer *, MemAllocator<FieldContainer *>> *_others = nullptr;
    std::atomic<Int32> _references{0};
    mutable std::atomic_flag _busy = ATOMIC_FLAG_INIT;
};
} // namespace OSG
