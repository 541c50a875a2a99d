#pragma once

#include <span>

#include "OSGBaseTypes.h"
#include "OSGContribTolvaniteApi.h"
#include "OSGObjByteStack.h"

namespace OSG
{
/// Numbers that are kept as differences to the least of them, with 0, 1, 2 or 4 bytes each: as few
/// as the largest difference needs. Indices of neighbouring faces are close to one another, so they
/// mostly take two bytes, and equal numbers take none. Any part can be unpacked by itself.
class OSG_CONTRIBTOLVANITE_API ObjPackedNumbers
{
  public:
    /// Each number is `number`.
    explicit ObjPackedNumbers(Int32 number = 0)
        : _least(number)
        , _greatest(number)
    {
    }
    /// The numbers lie in `room`.
    ObjPackedNumbers(std::span<Int32 const> numbers, ObjByteStack &room);

    Int32 least() const { return _least; }
    Int32 greatest() const { return _greatest; }
    /// Bytes for each number.
    UInt32 width() const { return _width; }
    /// Writes the numbers from the place `first` on.
    void unpack(std::size_t first, std::span<Int32> to) const;
    /// Gives the numbers back, and those that were packed into the room after them. `least` and
    /// `greatest` stay; nothing can be unpacked any more.
    void release(ObjByteStack &room)
    {
        if(_bytes != nullptr)
            room.dropFrom(_bytes);
        _bytes = nullptr;
    }

  private:
    template <class Word>
    void store(std::span<Int32 const> numbers, ObjByteStack &room);
    template <class Word>
    void load(std::size_t first, std::span<Int32> to) const;

    unsigned char *_bytes = nullptr; // not owned
    Int32 _least = 0;
    Int32 _greatest = 0;
    UInt32 _width = 0;
};
} // namespace OSG
