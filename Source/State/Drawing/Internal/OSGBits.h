#pragma once

/// \file
/// Sets of numbers: bit i % 64 of word i / 64 stands for number i.

#include <bit>
#include <vector>

#include "OSGBaseTypes.h"

namespace OSG
{
inline UInt32 count_of_bits(std::vector<UInt64> const &words)
{
    UInt32 count = 0;
    for(UInt64 word : words)
        count += static_cast<UInt32>(std::popcount(word));
    return count;
}

/// Calls `use` with the numbers of the set, in ascending order.
template <class Use>
void for_each_bit(std::vector<UInt64> const &words, Use use)
{
    for(std::size_t i = 0; i < words.size(); ++i)
    {
        for(UInt64 left = words[i]; left != 0; left &= left - 1)
            use(static_cast<UInt32>(i * 64) + static_cast<UInt32>(std::countr_zero(left)));
    }
}
} // namespace OSG
