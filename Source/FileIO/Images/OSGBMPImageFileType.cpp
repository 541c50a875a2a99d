#include "OSGStbImageFileType.h"

// Windows bitmap: a file header of 14 bytes, an information header, a colour table, and rows of
// whole 32-bit words. Compressed bitmaps are not read.

namespace OSG
{
namespace
{
constexpr UInt8 Signature[] = {'B', 'M'};
constexpr UInt32 CoreHeaderSize = 12;

UInt64 magnitude(UInt32 bits)
{
    Int64 const value = static_cast<Int32>(bits);
    return static_cast<UInt64>(value < 0 ? -value : value);
}

bool is_complete(PictureBytes const &bytes)
{
    ByteCursor at(bytes, 10);
    UInt64 const offset = at.little32();
    bool const hasCoreHeader = at.little32() == CoreHeaderSize;
    UInt64 const width = hasCoreHeader ? at.little16() : magnitude(at.little32());
    UInt64 const height =
        hasCoreHeader
            ? at.little16()
            : magnitude(at.little32()); // a negative height means that the top row comes first
    at.skip(2);
    UInt64 const pixelBits = at.little16();
    if(!at.isGood() || width > MaxPictureExtent || height > MaxPictureExtent)
        return false;
    UInt64 const rowBytes = (width * pixelBits + 31) / 32 * 4;
    return ByteCursor(bytes).skip(offset + rowBytes * height);
}

// A bit of a palette image becomes at most four bytes, so a byte of the file makes at most 32.
constexpr UInt64 MaxExpansion = 32;

StbImageFileType::Format const Format = {"Windows bitmap",  PictureFormat::Bmp, Signature,
                                         sizeof(Signature), is_complete,        MaxExpansion};
char const *Suffixes[] = {"bmp"};
StbImageFileType type(Suffixes, sizeof(Suffixes), Format);
} // namespace
} // namespace OSG
