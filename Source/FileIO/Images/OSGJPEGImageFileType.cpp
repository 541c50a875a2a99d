#include "OSGStbImageFileType.h"

// JPEG, ITU-T T.81 Annex B: marker segments, entropy-coded data behind each start of scan, the end
// of image marker last.

namespace OSG
{
namespace
{
constexpr UInt8 Signature[] = {0xff, 0xd8, 0xff};

enum Marker : UInt8
{
    StuffedByte = 0x00,
    FirstRestart = 0xd0,
    LastRestart = 0xd7,
    HuffmanTables = 0xc4,
    EndOfImage = 0xd9,
    StartOfScan = 0xda,
    FillByte = 0xff
};

// Goes behind the next marker that is one; 0 where there is none. Between segments there should be
// nothing else, within entropy-coded data stuffed bytes and restarts are part of it.
UInt8 next_marker(ByteCursor &at)
{
    while(at.left() > 1)
    {
        if(at.byte() != 0xff)
            continue;
        UInt8 marker = at.byte();
        while(marker == FillByte && at.left() > 0)
            marker = at.byte();
        bool const belongsToData =
            marker == StuffedByte || (marker >= FirstRestart && marker <= LastRestart);
        if(!belongsToData)
            return at.isGood() ? marker : 0;
    }
    return 0;
}

// A table has 16 counts of codes by length and a value for each code, 256 at most: stb does not
// look.
bool has_sound_tables(ByteCursor at, UInt64 size)
{
    for(UInt64 const end = at.position() + size; at.position() < end;)
    {
        at.skip(1);
        UInt32 codes = 0;
        for(int length = 1; length <= 16; ++length)
            codes += at.byte();
        if(codes > 256 || !at.skip(codes))
            return false;
    }
    return true;
}

// A preview within an application segment has an end of image of its own: segments are skipped as
// a whole.
bool is_complete(PictureBytes const &bytes)
{
    ByteCursor at(bytes, 2);
    bool hasScan = false;
    for(;;)
    {
        UInt8 const marker = next_marker(at);
        if(marker == EndOfImage)
            return hasScan;
        if(marker == 0)
            return false;
        hasScan = hasScan || marker == StartOfScan;
        UInt32 const length = at.big16();
        if(length < 2 || (marker == HuffmanTables && !has_sound_tables(at, length - 2)))
            return false;
        if(!at.skip(length - 2))
            return false;
    }
}

// One colour all over comes to 192 with the usual tables. Tables of its own could reach 512, but
// then a header alone could claim half a gigabyte for each megabyte.
constexpr UInt64 MaxExpansion = 200;

StbImageFileType::Format const Format = {
    "JPEG", PictureFormat::Jpeg, Signature, sizeof(Signature), is_complete, MaxExpansion};
char const *Suffixes[] = {"jpg", "jpeg", "jpe"};
StbImageFileType type(Suffixes, sizeof(Suffixes), Format);
} // namespace
} // namespace OSG
