#pragma once

/// \file
/// The bytes of a picture file, and a cursor that never reads beyond them.

#include <istream>
#include <vector>

#include "OSGBaseTypes.h"
#include "OSGMemManager.h"

namespace OSG
{
using PictureBytes = std::vector<UInt8, MemAllocator<UInt8>>;

/// Reads the rest of the stream. Memory grows with the bytes that are really there. The first
/// `count` bytes have to equal those at `signature`; otherwise the result is empty and nothing more
/// is read. `count` may be 0.
PictureBytes read_picture_bytes(std::istream &in, UInt8 const *signature, std::size_t count);

/// Reads bytes one after the other. Reading beyond the end gives 0, and isGood() is false from then
/// on.
class ByteCursor
{
  public:
    explicit ByteCursor(PictureBytes const &bytes, UInt64 at = 0)
        : _bytes(bytes)
        , _at(at)
    {
    }

    bool isGood() const { return _at <= _bytes.size(); }
    UInt64 position() const { return _at; }
    UInt64 left() const { return isGood() ? _bytes.size() - _at : 0; }
    /// Skips `count` bytes. False where fewer are left; isGood() is false from then on.
    bool skip(UInt64 count)
    {
        _at = count <= left() ? _at + count : _bytes.size() + UInt64(1);
        return isGood();
    }

    UInt8 byte()
    {
        UInt8 const value = left() > 0 ? _bytes[_at] : 0;
        skip(1);
        return value;
    }
    UInt32 little16() { return little(2); }
    UInt32 little32() { return little(4); }
    UInt32 big16() { return big(2); }
    UInt32 big32() { return big(4); }

  private:
    UInt32 little(int count)
    {
        UInt32 value = 0;
        for(int i = 0; i < count; ++i)
            value |= UInt32(byte()) << (8 * i);
        return value;
    }
    UInt32 big(int count)
    {
        UInt32 value = 0;
        for(int i = 0; i < count; ++i)
            value = value << 8 | byte();
        return value;
    }

    PictureBytes const &_bytes;
    UInt64 _at;
};
} // namespace OSG
