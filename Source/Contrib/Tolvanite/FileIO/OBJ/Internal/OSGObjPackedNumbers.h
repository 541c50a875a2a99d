#pragma once

#include <span>

#include "OSGBaseTypes.h"
#include "OSGContribTolvaniteApi.h"
#include "OSGMemArray.h"

namespace OSG
{
/// Numbers that are kept as differences to the least of them, with 0, 1, 2 or 4 bytes each: as few
/// as the largest difference needs. Indices of neighbouring faces are close to one another, so they
/// mostly take two bytes, and equal numbers take none. Any part can be unpacked by itself.
class OSG_CONTRIBTOLVANITE_API ObjPackedNumbers
{
  public:
    ObjPackedNumbers() = default;
    explicit ObjPackedNumbers(std::span<Int32 const> numbers);

    Int32 least() const { return _least; }
    Int32 greatest() const { return _greatest; }
    /// Bytes for each number.
    UInt32 width() const { return _width; }
    /// Writes the numbers from the place `first` on.
    void unpack(std::size_t first, std::span<Int32> to) const;
    /// Frees the numbers. `least` and `greatest` stay; nothing can be unpacked any more.
    void release() { _bytes = MemArray<unsigned char>(); }

  private:
    template <class Word>
    void store(std::span<Int32 const> numbers);
    template <class Word>
    void load(std::size_t first, std::span<Int32> to) const;

    MemArray<unsigned char> _bytes;
    Int32 _least = 0;
    Int32 _greatest = 0;
    UInt32 _width = 0;
};
} // namespace OSG
