#include "OSGInflatedSize.h"
#include "OSGStbImageFileType.h"

// Portable Network Graphics (ISO/IEC 15948): a signature, then chunks. A chunk has a length, a
// name, its data and a check sum. The header chunk comes first, the chunk IEND last.

namespace OSG
{
namespace
{
constexpr UInt8 Signature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};

enum ChunkName : UInt32
{
    HeaderChunk = 0x49484452,
    DataChunk = 0x49444154,
    EndChunk = 0x49454e44
};

bool has_all_chunks(PictureBytes const &bytes)
{
    ByteCursor at(bytes, sizeof(Signature));
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
    ByteCursor at(bytes, sizeof(Signature));
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

struct Header
{
    UInt64 width, height, pixelBits;
    bool isInterlaced;
};

bool read_header(PictureBytes const &bytes, Header &header)
{
    ByteCursor at(bytes, sizeof(Signature) + 4);
    if(at.big32() != HeaderChunk)
        return false;
    header.width = at.big32();
    header.height = at.big32();
    UInt32 const depth = at.byte();
    UInt32 const colour = at.byte();
    at.skip(2);
    header.isInterlaced = at.byte() != 0;
    UInt32 const samples = colour == 2 ? 3 : colour == 4 ? 2 : colour == 6 ? 4 : 1;
    header.pixelBits = UInt64(depth) * samples;
    return at.isGood() && header.width <= MaxPictureExtent && header.height <= MaxPictureExtent;
}

// Bytes of the rows before compression. A row is a filter byte and whole bytes of pixels. A picture
// without columns has no rows.
UInt64 rows_size(Header const &header, UInt64 width, UInt64 height)
{
    return width > 0 ? height * (1 + (width * header.pixelBits + 7) / 8) : 0;
}

// Size of the data before compression. An interlaced picture consists of seven smaller pictures
// (Adam7).
UInt64 inflated_size(Header const &header)
{
    if(!header.isInterlaced)
        return rows_size(header, header.width, header.height);
    struct Pass
    {
        UInt32 x, y, dx, dy;
    };
    // First column and row of each pass, and the steps to the next ones.
    constexpr Pass Passes[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                               {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
    UInt64 size = 0;
    for(Pass const &pass : Passes)
        size += rows_size(header, (header.width - pass.x + pass.dx - 1) / pass.dx,
                          (header.height - pass.y + pass.dy - 1) / pass.dy);
    return size;
}

// Most files are large enough for the picture that they claim, and are decoded without a further
// check. For the others the size of the compressed data is measured first.
bool is_modest(UInt64 pixels, std::size_t fileSize)
{
    return pixels * 4 <= 8 * 1024 * 1024 + UInt64(8) * fileSize;
}

// Too little data is detected here, where the picture is large for its file. Too much data is
// detected by the decoder, whose blocks do not grow, save for interlaced pictures: the decoder does
// not know their size in advance, so it is measured here.
bool is_complete(PictureBytes const &bytes)
{
    Header header{};
    if(!has_all_chunks(bytes) || !read_header(bytes, header))
        return false;
    if(!header.isInterlaced && is_modest(header.width * header.height, bytes.size()))
        return true;
    PictureBytes const data = packed_data(bytes);
    UInt64 const size = inflated_size(header);
    return inflates_to(data, size) && !(header.isInterlaced && inflates_to(data, size + 1));
}

void append_big32(PictureBytes &bytes, UInt64 value)
{
    for(int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<UInt8>(value >> shift));
}

// Joins all data chunks into one at the place of the first. The decoder then needs one block for
// the data, which does not grow. It also never meets an empty first chunk, which it would copy to a
// null pointer. The check sum may be wrong afterwards; the decoder does not read it.
StbBlocks join_data_chunks(PictureBytes &bytes)
{
    PictureBytes const data = packed_data(bytes);
    PictureBytes joined(bytes.begin(), bytes.begin() + sizeof(Signature));
    joined.reserve(bytes.size() + 12);
    bool isWritten = false;
    ByteCursor at(bytes, sizeof(Signature));
    for(UInt32 name = 0; name != EndChunk;)
    {
        auto const chunk = bytes.begin() + static_cast<std::ptrdiff_t>(at.position());
        UInt32 const length = at.big32();
        name = at.big32();
        at.skip(UInt64(length) + 4);
        if(name != DataChunk)
        {
            joined.insert(joined.end(), chunk, chunk + 12 + std::ptrdiff_t(length));
            continue;
        }
        if(isWritten || data.empty())
            continue;
        isWritten = true;
        append_big32(joined, data.size());
        append_big32(joined, DataChunk);
        joined.insert(joined.end(), data.begin(), data.end());
        append_big32(joined, 0);
    }
    Header header{};
    read_header(bytes, header);
    bytes.swap(joined);
    return header.isInterlaced ? StbBlocks::Growing : StbBlocks::Fixed;
}

// Deflate makes at most 1032 bytes of one (a match of 258 bytes takes two bits). Such a byte may
// hold eight palette indices, which become 32 bytes of colour.
constexpr UInt64 MaxExpansion = 1032 * 32;

StbImageFileType::Format const Format = {"Portable Network Graphics",
                                         PictureFormat::Png,
                                         Signature,
                                         sizeof(Signature),
                                         is_complete,
                                         MaxExpansion,
                                         join_data_chunks};
char const *Suffixes[] = {"png"};
StbImageFileType type(Suffixes, sizeof(Suffixes), Format);
} // namespace
} // namespace OSG
