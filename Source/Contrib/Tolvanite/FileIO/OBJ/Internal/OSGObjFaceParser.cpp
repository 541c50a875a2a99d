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

/// The zero-based index that `count` digits make; -1 where there are none.
inline Int32 plain_index(char const *p, UInt32 count)
{
    return static_cast<Int32>(number_of_digits(p, count)) - 1;
}

/// Reads a corner in one of the four usual forms, with up to eight digits a number, followed by
/// white space or the end of the line. Null for any other corner, which is then read number by
/// number. The ends of the numbers come from one comparison, so none waits for another.
inline char const *scan_plain_corner(char const *p, ObjTiePoint &corner)
{
    UInt32 others = other_than_digits_16(p) | 1u << 16;
    UInt32 const first = static_cast<UInt32>(std::countr_zero(others));
    if(first - 1 >= DigitsAtOnce)
        return nullptr;
    corner.index[ObjPositionIndex] = plain_index(p, first);
    corner.index[ObjTexCoordIndex] = -1;
    corner.index[ObjNormalIndex] = -1;
    UInt32 end = first;
    if(p[first] == '/')
    {
        others ^= 1u << 16;
        others |= other_than_digits_16(p + 16) << 16;
        others &= others - 1;
        end = static_cast<UInt32>(std::countr_zero(others));
        UInt32 const second = end - first - 1;
        if(second > DigitsAtOnce)
            return nullptr;
        corner.index[ObjTexCoordIndex] = plain_index(p + first + 1, second);
        bool const hasThird = p[end] == '/';
        if(second == 0 && !hasThird)
            return nullptr;
        if(hasThird)
        {
            others &= others - 1;
            UInt32 const begin = end + 1;
            end = static_cast<UInt32>(std::countr_zero(others));
            if(end - begin - 1 >= DigitsAtOnce)
                return nullptr;
            corner.index[ObjNormalIndex] = plain_index(p + begin, end - begin);
        }
    }
    return is_line_end(p[end]) || is_blank(p[end]) ? p + end : nullptr;
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
    if(!takePlainLine())
        parseLines(counts);
    _records.endFace();
}

/// Takes a line that is in memory as a whole and has plain corners alone. Otherwise nothing
/// changes.
bool ObjFaceParser::takePlainLine()
{
    std::string_view const text = _text.atHand();
    std::size_t const before = _records.openTiePoints();
    char const *const end = takePlainCorners(text.data());
    std::size_t const length = static_cast<std::size_t>(end - text.data());
    if(_text.good() && *end == '\n' && length > 0 && length < text.size() &&
       length < ReadBuffer::LineLimit)
    {
        _text.takeAtHand(length);
        return true;
    }
    _records.dropOpenTiePoints(before);
    return false;
}

void ObjFaceParser::parseLines(ObjElementCounts const &counts)
{
    while(parseLine(_text.lineRest().data(), counts) == LineEnd::Continued)
        _text.ignoreChar();
    closeCorner();
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
