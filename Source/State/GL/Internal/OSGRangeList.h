#pragma once

#include <map>

#include "OSGBaseTypes.h"
#include "OSGStateApi.h"

namespace OSG
{
/// The free parts of an array whose parts are given out and taken back.
class OSG_STATE_API RangeList
{
  public:
    static constexpr UInt32 None = 0xFFFFFFFF;

    /// All of an array of that size is free.
    explicit RangeList(UInt32 size)
    {
        if(size > 0)
            _free.emplace(0, size);
    }

    /// Where `count` elements in a row are now taken, the first place that has room; None where
    /// there is none. 0 elements lie at 0.
    UInt32 take(UInt32 count);
    /// Takes back what take() gave. Needs no memory.
    void giveBack(UInt32 first, UInt32 count);
    bool isAllFree() const { return _taken.empty(); }
    /// The first element behind all that are taken.
    UInt32 takenEnd() const;
    /// The array ends at `size`, which lies from takenEnd() to the former end. Needs no memory.
    void cut(UInt32 size);

  private:
    // By the first element, the number of elements; no two free parts touch.
    std::map<UInt32, UInt32> _free;
    std::map<UInt32, UInt32> _taken;
};
} // namespace OSG
