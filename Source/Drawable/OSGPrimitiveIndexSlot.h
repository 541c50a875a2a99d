#pragma once

#include <atomic>
#include <cstdint>

#include "OSGDrawableApi.h"

namespace OSG
{
class PrimitiveIndexRecord;

/// A geometry's place for its indices, in the size of a pointer. One bit of it is the geometry's
/// note that it has warned of an index out of range. All functions but drop() may be called by
/// several threads at once.
class OSG_DRAWABLE_API PrimitiveIndexSlot
{
  public:
    PrimitiveIndexSlot() = default;
    PrimitiveIndexSlot(PrimitiveIndexSlot const &) = delete;
    PrimitiveIndexSlot &operator=(PrimitiveIndexSlot const &) = delete;
    ~PrimitiveIndexSlot() { drop(); }

    /// True for the first call only.
    bool noteWarning() { return (_word.fetch_or(Warned, std::memory_order_relaxed) & Warned) == 0; }

    /// The record; null where no query has asked for one.
    PrimitiveIndexRecord *find() const { return toRecord(_word.load(std::memory_order_acquire)); }
    /// The record, made where there is none. Null without memory.
    PrimitiveIndexRecord *obtain();
    /// Destroys record and indices. While this is called nobody queries the geometry.
    void drop()
    {
        if(find() != nullptr)
            destroy();
    }

  private:
    static constexpr std::uintptr_t Warned = 1;

    static PrimitiveIndexRecord *toRecord(std::uintptr_t word)
    {
        return reinterpret_cast<PrimitiveIndexRecord *>(word & ~Warned);
    }
    void destroy();

    std::atomic<std::uintptr_t> _word = 0;
};
} // namespace OSG
