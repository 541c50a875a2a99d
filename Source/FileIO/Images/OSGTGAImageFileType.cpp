#include "OSGStbImageFileType.h"

// Truevision TGA 2.0: a header of 18 bytes, a text, a colour map, and the pixels. The pixels are
// stored plainly or in packets, which are runs or literals.

namespace OSG
{
namespace
{
struct Header
{
    UInt32 textLength, hasColorMap, type, mapStart, mapLength, mapBits, width, height, pixelBits;

    bool isPacked() const { return type >= 9; }
    bool hasIndices() const { return type == 1 || type == 9; }
    UInt64 pixelBytes() const { return (pixelBits + 7) / 8; }
    UInt64 mapBytes() const { return UInt64(mapLength) * ((mapBits + 7) / 8); }
};

Header read_header(ByteCursor &at)
{
    Header header{};
    header.textLength = at.byte();
    header.hasColorMap = at.byte();
    header.type = at.byte();
    header.mapStart = at.little16();
    header.mapLength = at.little16();
    header.mapBits = at.byte();
    at.skip(4);
    header.width = at.little16();
    header.height = at.little16();
    header.pixelBits = at.byte();
    at.skip(1);
    return header;
}

// The format has no signature. Impossible values in the header tell other files apart.
bool is_plausible(Header const &header)
{
    bool const known =
        (header.type >= 1 && header.type <= 3) || (header.type >= 9 && header.type <= 11);
    return known && header.hasColorMap == (header.hasIndices() ? 1u : 0u) && header.width > 0 &&
           header.height > 0 && header.pixelBits > 0 && header.pixelBits <= 32;
}

bool has_all_packets(ByteCursor &at, Header const &header)
{
    UInt64 const wanted = UInt64(header.width) * header.height;
    UInt64 made = 0;
    while(made < wanted)
    {
        UInt8 const packet = at.byte();
        UInt64 const count = (packet & 0x7fu) + 1u;
        bool const isRun = (packet & 0x80u) != 0;
        if(!at.skip(isRun ? header.pixelBytes() : count * header.pixelBytes()))
            return false;
        made += count;
    }
    return true;
}

bool is_complete(PictureBytes const &bytes)
{
    ByteCursor at(bytes);
    Header const header = read_header(at);
    if(!is_plausible(header))
        return false;
    UInt64 const before =
        header.textLength + (header.hasIndices() ? header.mapStart + header.mapBytes() : UInt64(0));
    if(!at.skip(before))
        return false;
    if(header.isPacked())
        return has_all_packets(at, header);
    return at.skip(UInt64(header.width) * header.height * header.pixelBytes());
}

// A packet of two bytes can stand for 128 palette indices, which become 512 bytes of colour.
constexpr UInt64 MaxExpansion = 256;

StbImageFileType::Format const Format = {"Truevision TGA", PictureFormat::Tga, nullptr, 0,
                                         is_complete,      MaxExpansion};
char const *Suffixes[] = {"tga"};
StbImageFileType type(Suffixes, sizeof(Suffixes), Format);
} // namespace
} // namespace OSG
