#include "OSGReadBuffer.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <istream>
#include <streambuf>
#include <typeinfo>

namespace OSG
{
namespace
{
constexpr char Nothing[DigitScanReach] = {};

/// Gives the number of characters that a stream buffer holds ready. Copying no more than these
/// calls no virtual operation. Such a call could raise an exception half way, and the characters
/// read before it would be lost.
struct GetArea : std::streambuf
{
    static std::streamsize size(std::streambuf &buffer)
    {
        return (buffer.*&GetArea::egptr)() - (buffer.*&GetArea::gptr)();
    }
};

/// A file reads a long piece straight to its place, which saves a copy and many calls of the
/// system. Its own buffer is much shorter.
constexpr std::streamsize LongPiece = 64 * 1024;

std::streamoff place_of(std::streambuf &buffer)
{
    return buffer.pubseekoff(0, std::ios_base::cur, std::ios_base::in);
}

/// Takes a long piece of a file. Returns the number of characters; 0 where nothing was taken and
/// the usual way has to decide. Where the file raises an exception, its place tells how many came
/// before it; the file raises it again when it is asked for the next one.
std::streamsize take_of_file(std::streambuf &buffer, char *to, std::streamsize room)
{
    if(room < LongPiece || typeid(buffer) != typeid(std::filebuf))
        return 0;
    std::streamoff const before = place_of(buffer);
    if(before < 0)
        return 0;
    try
    {
        return buffer.sgetn(to, room);
    }
    catch(...)
    {
        return std::max<std::streamoff>(place_of(buffer) - before, 0);
    }
}

// All blocks are counted although few readers ask for the line. The compiler turns the loops of
// fixed length into vector instructions.
UInt64 count_line_breaks(char const *begin, char const *end)
{
    constexpr std::size_t Lanes = 16;
    constexpr std::size_t Rows = 255; // as many as a byte can count
    UInt64 count = 0;
    while(end - begin >= static_cast<std::ptrdiff_t>(Lanes))
    {
        UInt8 sums[Lanes] = {};
        std::size_t const rows =
            std::min<std::size_t>(Rows, static_cast<std::size_t>(end - begin) / Lanes);
        for(std::size_t row = 0; row < rows; ++row, begin += Lanes)
        {
            for(std::size_t i = 0; i < Lanes; ++i)
                sums[i] = static_cast<UInt8>(sums[i] + (begin[i] == '\n'));
        }
        for(UInt8 sum : sums)
            count += sum;
    }
    return count + static_cast<UInt64>(std::count(begin, end, '\n'));
}
} // namespace

ReadBuffer::ReadBuffer(std::istream &in, std::size_t blockSize)
    : _in(in)
    , _blockSize(std::max<std::size_t>(blockSize, 1))
    , _state(in.rdstate())
    , _data(WordReach + _blockSize + LineLimit + DigitScanReach)
    , _pos(front())
    , _end(front())
{
    std::fill(_data.data(), front(), ' ');
    *_end = '\n';
}

ReadBuffer::~ReadBuffer() = default;

/// Moves the unread part to the front and appends a block of the stream. False if the stream has
/// nothing more. Pointers into the block are invalid afterwards.
bool ReadBuffer::more()
{
    if(_source != Source::Open)
        return false;
    std::size_t const unread = static_cast<std::size_t>(_end - _pos);
    char *const kept = _pos - WordReach;
    _linesBefore += count_line_breaks(_data.data(), kept);
    std::memmove(_data.data(), kept, WordReach + unread);
    _pos = front();
    _end = _pos + unread;
    char *const former = _end;
    try
    {
        std::size_t const room = _data.size() - WordReach - DigitScanReach - unread;
        fetchBlock(_end, _end + std::min(_blockSize, room));
    }
    catch(...)
    {
        _source = Source::Threw;
    }
    *_end = '\n';
    _fetched += static_cast<UInt64>(_end - former);
    ++_blocks;
    return _end != former;
}

/// Advances `to` after every piece, so that it is right when the stream's buffer raises an
/// exception.
void ReadBuffer::fetchBlock(char *&to, char *limit)
{
    using Traits = std::char_traits<char>;
    std::streambuf &buffer = *_in.rdbuf();
    while(to != limit)
    {
        if(std::streamsize const taken = take_of_file(buffer, to, limit - to); taken > 0)
        {
            to += taken;
            continue;
        }
        if(Traits::eq_int_type(buffer.sgetc(), Traits::eof()))
        {
            _source = Source::Ended;
            return;
        }
        std::streamsize const area = std::min<std::streamsize>(GetArea::size(buffer), limit - to);
        std::streamsize const taken = area > 0 ? buffer.sgetn(to, area) : 0;
        if(taken > 0)
            to += taken;
        else
            *to++ = Traits::to_char_type(buffer.sbumpc());
    }
}

void ReadBuffer::noteSourceEnd()
{
    _state |= _source == Source::Ended ? std::ios_base::eofbit : std::ios_base::badbit;
}

bool ReadBuffer::enter()
{
    if(good())
        return true;
    _state |= std::ios_base::failbit;
    return false;
}

/// Does what the sentry of a stream does: skips white space. Sets failbit and returns false if
/// nothing follows.
inline bool ReadBuffer::enterBehindSpace()
{
    if(!good())
        return enter();
    do
    {
        while(is_stream_space(*_pos) && _pos != _end)
            ++_pos;
        if(_pos != _end)
            return true;
    } while(more());
    noteSourceEnd();
    return enter();
}

/// A token that may continue in the next block, or that is not there.
std::string_view ReadBuffer::tokenAtBorder()
{
    if(!enterBehindSpace())
        return {};
    _split.clear();
    for(;;)
    {
        char const *p = _pos;
        while(!is_stream_space(*p))
            ++p;
        std::size_t const length = static_cast<std::size_t>(p - _pos);
        _split.append(_pos, std::min(length, TokenLimit - _split.size()));
        _pos += length;
        if(_pos != _end)
            break;
        if(!more())
        {
            noteSourceEnd();
            break;
        }
    }
    return _split;
}

bool ReadBuffer::readReal32(Real32 &value)
{
    value = 0;
    if(!enterBehindSpace())
        return false;
    if(char const *const behind = scan_short_real32(_pos, _end, value))
    {
        _pos += behind - _pos;
        return true;
    }
    return readLongReal32(value);
}

bool ReadBuffer::readLongReal32(Real32 &value)
{
    Real32Accumulator number;
    while(available() && number.accept(*_pos))
        ++_pos;
    if(_pos == _end)
        noteSourceEnd();
    if(!bad() && !number.finish(value))
        _state |= std::ios_base::failbit;
    return !fail();
}

std::string_view ReadBuffer::lineRest()
{
    if(!enter())
        return std::string_view(Nothing); // a zero byte is its first
    std::size_t length = 0;
    bool found = false;
    for(;;)
    {
        std::size_t const unread = static_cast<std::size_t>(_end - _pos);
        std::size_t const seen = length;
        length = std::min(unread, LineLimit);
        void const *const lineBreak = std::memchr(_pos + seen, '\n', length - seen);
        found = lineBreak != nullptr;
        if(found)
            length = static_cast<std::size_t>(static_cast<char const *>(lineBreak) - _pos);
        // Formatted extraction also looks at the character behind the longest result, so it has to
        // be there.
        if(found || unread > LineLimit || !more())
            break;
    }
    std::string_view result(_pos, length);
    _pos += length;
    if(!found && _pos == _end)
        noteSourceEnd();
    if(length == 0)
        _state |= std::ios_base::failbit;
    if(!found && _pos != _end && *_pos != '\n')
    {
        _cutLine.assign(result.begin(), result.end());
        _cutLine.resize(length + DigitScanReach);
        result = std::string_view(_cutLine.data(), length);
    }
    return result;
}

void ReadBuffer::ignoreLine(UInt64 limit)
{
    if(!enter())
        return;
    for(;;)
    {
        std::size_t const unread = static_cast<std::size_t>(_end - _pos);
        std::size_t const length = static_cast<std::size_t>(std::min<UInt64>(unread, limit));
        if(void *const lineBreak = std::memchr(_pos, '\n', length))
        {
            _pos = static_cast<char *>(lineBreak) + 1;
            return;
        }
        _pos += length;
        limit -= length;
        bool const ended = _pos == _end && !more();
        // After the limit the stream looks at one more character. If the text ends there, eofbit is
        // not set; only an exception counts.
        if(ended && (limit > 0 || _source == Source::Threw))
            noteSourceEnd();
        if(ended || limit == 0)
            return;
    }
}

void ReadBuffer::ignoreChar()
{
    if(!enter())
        return;
    if(available())
        ++_pos;
    else
        noteSourceEnd();
}

UInt64 ReadBuffer::lineNumber() const
{
    return 1 + _linesBefore + count_line_breaks(_data.data(), _pos);
}

std::string ReadBuffer::wordHere()
{
    while(_end - _pos < static_cast<std::ptrdiff_t>(WordReach) && more())
    {
    }
    char const *begin = _pos;
    while(begin != _pos - WordReach && !is_stream_space(begin[-1]))
        --begin;
    char const *end = _pos;
    while(end != _end && end - _pos < static_cast<std::ptrdiff_t>(WordReach) &&
          !is_stream_space(*end))
        ++end;
    return std::string(begin, end);
}

bool ReadBuffer::finish()
{
    bool exact = true;
    if(std::streamoff const unread = _end - _pos; unread > 0)
    {
        try
        {
            exact = _in.rdbuf()->pubseekoff(-unread, std::ios_base::cur, std::ios_base::in) !=
                    std::streampos(std::streamoff(-1));
        }
        catch(...)
        {
            exact = false;
            _state |= std::ios_base::badbit;
        }
    }
    _in.setstate(_state);
    return exact;
}
} // namespace OSG
