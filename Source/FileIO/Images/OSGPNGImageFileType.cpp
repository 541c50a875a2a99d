#include "OSGInflatedSize.h"
#include "OSGStbImageFileType.h"

// Portable Network Graphics, ISO/IEC 15948: a signature, then chunks of length, name, data and
// check sum, the header first, the one named IEND last.

namespace OSG
{
namespace
{
constexpr UInt8 signature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};

enum ChunkName : UInt32
{
    HeaderChunk = 0x49484452,
    DataChunk = 0x49444154,
    EndChunk = 0x49454e44
};

bool has_all_chunks(PictureBytes const &bytes)
{
    ByteCursor at(bytes, sizeof(signature));
    for(;;)
    {
        UInt32 const length = at.big32();
        UInt32 const name = at.big32();
        if(!at.skip(UInt64(length) + 4))
            return false;
        if(name == EndChunk)
            return true;
    }
}

PictureBytes packed_data(PictureBytes const &bytes)
{
    PictureBytes data;
    ByteCursor at(bytes, sizeof(signature));
    for(UInt32 name = 0; at.isGood() && name != EndChunk; at.skip(4))
    {
        UInt32 const length = at.big32();
        name = at.big32();
        auto const begin = bytes.begin() + static_cast<std::ptrdiff_t>(at.position());
        if(name == DataChunk)
            data.insert(data.end(), begin, begin + length);
        at.skip(length);
    }
    return data;
}

// Most files hold so much of a picture that memory for it may be taken unseen; for the rest it is
// counted first.
bool is_modest(UInt64 pixels, std::size_t fileSize)
{
    return pixels * 4 <= 8 * 1024 * 1024 + UInt64(8) * fileSize;
}

bool is_complete(PictureBytes const &bytes)
{
    if(!has_all_chunks(bytes))
        return false;
    ByteCursor at(bytes, sizeof(signature) + 4);
    if(at.big32() != HeaderChunk)
        return false;
    UInt64 const width = at.big32();
    UInt64 const height = at.big32();
    UInt32 const depth = at.byte();
    UInt32 const colour = at.byte();
    if(width > MaxPictureExtent || height > MaxPictureExtent)
        return false;
    if(is_modest(width * height, bytes.size()))
        return true;
    UInt32 const samples = colour == 2 ? 3 : colour == 4 ? 2 : colour == 6 ? 4 : 1;
    return inflates_to(packed_data(bytes), width * height * depth * samples / 8);
}

// Deflate makes at most 258 bytes of two bits; of a byte with eight indices come 32 of colour.
constexpr UInt64 max_expansion = 1032 * 32;

StbImageFileType::Format const format = {
    "Portable Network Graphics", PictureFormat::Png, signature,
    sizeof(signature),           is_complete,        max_expansion};
char const *suffixes[] = {"png"};
StbImageFileType type(suffixes, sizeof(suffixes), format);
} // namespace
} // namespace OSG
