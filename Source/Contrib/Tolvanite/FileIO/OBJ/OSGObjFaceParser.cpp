#include "OSGObjFaceParser.h"

#include <algorithm>
#include <limits>

#include "OSGStreamNumber.h"

namespace OSG
{
namespace
{
// A line ends at a zero byte or a line break, so a line break does not count as white space here.
bool is_line_end(char c) { return c == '\0' || c == '\n'; }
bool is_blank(char c) { return c != '\n' && is_stream_space(c); }

/// Reads an optional sign and digits. A number beyond 32 bits saturates. Returns `p` itself if
/// there is no digit.
char const *scan_number(char const *p, Int32 &number)
{
    char const *const begin = p;
    bool const negative = *p == '-';
    if(negative || *p == '+')
        ++p;
    char const *const first = p;
    // Beyond 32 bits. The number grows no further, so it cannot overflow.
    constexpr Int64 Enough = Int64(1) << 40;
    Int64 magnitude = 0;
    for(; static_cast<unsigned char>(*p - '0') < 10; ++p)
    {
        if(magnitude < Enough)
            magnitude = magnitude * 10 + (*p - '0');
    }
    if(p == first)
        return begin;
    using Limits = std::numeric_limits<Int32>;
    number = static_cast<Int32>(negative ? std::max<Int64>(-magnitude, Limits::min())
                                         : std::min<Int64>(magnitude, Limits::max()));
    return p;
}

/// The zero-based index for a number of the file. Negative numbers count back from `count`. 0 gives
/// -1, which means no index.
Int32 index_of(Int32 number, std::size_t count)
{
    if(number >= 0)
        return number - 1;
    Int64 const index = static_cast<Int64>(count) + number;
    return static_cast<Int32>(std::min<Int64>(index, std::numeric_limits<Int32>::max()));
}
/// Reads a number without sign of up to eight digits and moves `p` behind it. A ninth digit is left
/// there, so the corner does not count as plain. False if there is no digit.
inline bool scan_plain_number(char const *&p, Int32 &index)
{
    DigitScan const scan = scan_eight_digits(p);
    p += scan.count;
    index = static_cast<Int32>(scan.number) - 1;
    return scan.count != 0;
}

/// Reads a corner in one of the four usual forms, followed by white space or the end of the line.
/// Null for any other corner, which is then read number by number.
inline char const *scan_plain_corner(char const *p, ObjTiePoint &corner)
{
    corner = ObjTiePoint();
    if(!scan_plain_number(p, corner.index[ObjPositionIndex]))
        return nullptr;
    if(*p == '/')
    {
        ++p;
        if(*p != '/' && !scan_plain_number(p, corner.index[ObjTexCoordIndex]))
            return nullptr;
        if(*p == '/' && !scan_plain_number(++p, corner.index[ObjNormalIndex]))
            return nullptr;
    }
    return is_line_end(*p) || is_blank(*p) ? p : nullptr;
}

char const *skip_blanks(char const *p)
{
    while(is_blank(*p))
        ++p;
    return p;
}
} // namespace

void ObjFaceParser::parse(ObjElementCounts const &counts)
{
    while(parseLine(_text.lineRest().data(), counts) == LineEnd::Continued)
        _text.ignoreChar();
    closeCorner();
    _records.endFace();
}

ObjFaceParser::LineEnd ObjFaceParser::parseLine(char const *p, ObjElementCounts const &counts)
{
    // Nearly all corners are plain. The general way below also continues a corner of the line
    // before.
    if(!_cornerIsOpen)
        p = takePlainCorners(p);
    UInt32 kind = ObjPositionIndex;
    while(!is_line_end(*p))
    {
        if(*p == '\\')
            return LineEnd::Continued;
        for(; *p == '/'; ++p)
            ++kind;
        if(is_blank(*p))
        {
            closeCorner();
            kind = ObjPositionIndex;
            p = takePlainCorners(p);
            continue;
        }
        Int32 number;
        char const *const behind = scan_number(p, number);
        if(behind == p)
            break;
        p = behind;
        if(kind == ObjPositionIndex)
            openCorner();
        if(kind < ObjIndexKindCount && _cornerIsOpen)
        {
            _corner.index[kind] = index_of(number, counts.count[kind]);
            continue;
        }
        while(!is_line_end(*p) && !is_blank(*p))
            ++p;
    }
    return LineEnd::Face;
}

/// Adds corners as long as they are plain. Returns the beginning of the first word that is not a
/// plain corner, or the end of the line.
char const *ObjFaceParser::takePlainCorners(char const *p)
{
    ObjTiePoint corner;
    for(;;)
    {
        p = skip_blanks(p);
        char const *const behind = scan_plain_corner(p, corner);
        if(behind == nullptr)
            return p;
        _records.addTiePoint(corner);
        p = behind;
    }
}

void ObjFaceParser::openCorner()
{
    closeCorner();
    _corner = ObjTiePoint();
    _cornerIsOpen = true;
}

void ObjFaceParser::closeCorner()
{
    if(_cornerIsOpen)
        _records.addTiePoint(_corner);
    _cornerIsOpen = false;
}
} // namespace OSG
