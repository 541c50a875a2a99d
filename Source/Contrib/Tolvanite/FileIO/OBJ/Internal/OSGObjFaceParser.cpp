#include "OSGObjFaceParser.h"

#include <algorithm>
#include <bit>
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
            p = skip_blanks(p);
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
