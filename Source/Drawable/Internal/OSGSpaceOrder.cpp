#include "OSGSpaceOrder.h"

#include <algorithm>

namespace OSG
{
SpaceOrder::SpaceOrder(UInt32 capacity, Pnt3f const &low, Pnt3f const &high)
    : _entries(capacity)
    , _low(low)
{
    Vec3f const extent = high - low;
    Real32 const longest = std::max(extent[0], std::max(extent[1], extent[2]));
    _stepsPerUnit = longest > 0.f ? 1024.f / longest : 0.f;
}

// A radix sort from the lowest digit up: three passes for the 30 bits of a key.
MemArray<UInt32> SpaceOrder::finish(UInt32 size)
{
    constexpr UInt32 DigitBits = 10;
    constexpr UInt32 Digits = 1u << DigitBits;
    MemArray<Entry> other(_size);
    for(UInt32 shift = 0; shift < 3 * DigitBits; shift += DigitBits)
    {
        UInt32 begin[Digits] = {};
        for(UInt32 i = 0; i < _size; ++i)
            ++begin[_entries[i].key >> shift & (Digits - 1)];
        UInt32 sum = 0;
        for(UInt32 &digit : begin)
            sum += std::exchange(digit, sum);
        for(UInt32 i = 0; i < _size; ++i)
            other[begin[_entries[i].key >> shift & (Digits - 1)]++] = _entries[i];
        std::swap(_entries, other);
    }
    other = MemArray<Entry>();
    MemArray<UInt32> numbers(std::max(size, _size));
    for(UInt32 i = 0; i < _size; ++i)
        numbers[i] = _entries[i].number;
    _entries = MemArray<Entry>();
    return numbers;
}
} // namespace OSG
