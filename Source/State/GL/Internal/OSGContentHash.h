#pragma once

#include <cstring>
#include <vector>

#include "OSGBaseTypes.h"

namespace OSG
{
/// A hash of arrays, to see whether they are the same as before. It is FNV-1a, over 8 bytes at a
/// time (Fowler, Noll, Vo), with its bits mixed once more, because the high bits of a product do
/// not reach the low ones.
class ContentHash
{
  public:
    void add(void const *data, std::size_t bytes)
    {
        auto const *at = static_cast<UInt8 const *>(data);
        addWord(bytes);
        for(; bytes >= sizeof(UInt64); bytes -= sizeof(UInt64), at += sizeof(UInt64))
        {
            UInt64 word;
            std::memcpy(&word, at, sizeof(word));
            addWord(word);
        }
        UInt64 rest = 0;
        if(bytes > 0)
            std::memcpy(&rest, at, bytes);
        addWord(rest);
    }
    template <class Array>
    void addArray(Array const &array)
    {
        add(array.data(), array.size() * sizeof(array[0]));
    }
    /// Never 0.
    UInt64 value() const { return _value | 1; }

  private:
    void addWord(UInt64 word)
    {
        constexpr UInt64 Prime = 0x100000001B3;
        _value = (_value ^ word) * Prime;
        _value ^= _value >> 32;
    }

    UInt64 _value = 0xCBF29CE484222325;
};
} // namespace OSG
