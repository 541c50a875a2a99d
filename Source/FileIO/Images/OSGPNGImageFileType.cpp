#include "OSGStbImageFileType.h"

// Portable Network Graphics, ISO/IEC 15948: a signature, then chunks of length, name, data and
// check sum, the last one named IEND.

namespace OSG
{
namespace
{
constexpr UInt8 signature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
constexpr UInt32 end_chunk = 0x49454e44;

bool is_complete(PictureBytes const &bytes)
{
    ByteCursor at(bytes, sizeof(signature));
    for(;;)
    {
        UInt32 const length = at.big32();
        UInt32 const name = at.big32();
        if(!at.skip(UInt64(length) + 4))
            return false;
        if(name == end_chunk)
            return true;
    }
}

// Deflate makes at most 258 bytes of two bits.
constexpr UInt64 max_expansion = 1032;

StbImageFileType::Format const format = {
    "Portable Network Graphics", PictureFormat::Png, signature,
    sizeof(signature),           is_complete,        max_expansion};
char const *suffixes[] = {"png"};
StbImageFileType type(suffixes, sizeof(suffixes), format);
} // namespace
} // namespace OSG
