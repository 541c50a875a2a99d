#include "OSGStbImageFileType.h"

// JPEG (ITU-T T.81, Annex B): a sequence of marker segments. Entropy-coded data follow each start
// of scan. The end-of-image marker comes last.

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

// Moves behind the next marker and returns it; 0 where there is none. A stuffed zero byte (FF 00)
// and a restart marker belong to the entropy-coded data and are skipped.
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

// A Huffman table has 16 counts of codes, one per length, and a value for each code. The sum of the
// counts may not exceed 256; stb does not check this.
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

// An application segment may hold a preview with an end-of-image marker of its own, so segments are
// skipped as a whole.
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

// A picture of one colour has 192 bytes for each byte of the file with the usual tables. Special
// tables could reach 512, but such a bound would let a header claim half a gigabyte for each
// megabyte of the file.
constexpr UInt64 MaxExpansion = 200;

StbImageFileType::Format const Format = {
    "JPEG", PictureFormat::Jpeg, Signature, sizeof(Signature), is_complete, MaxExpansion};
char const *Suffixes[] = {"jpg", "jpeg", "jpe"};
StbImageFileType type(Suffixes, sizeof(Suffixes), Format);
} // namespace
} // namespace OSG
