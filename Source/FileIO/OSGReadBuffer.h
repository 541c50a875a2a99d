#pragma once

/// \file
/// Text input for the scene file types: formatted extraction from a stream, in large blocks.

#include <ios>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "OSGBaseTypes.h"
#include "OSGFileIOApi.h"
#include "OSGMemManager.h"
#include "OSGStreamNumber.h"

namespace OSG
{
/// Reads a stream from its current place, with the results that the stream's own extraction
/// operators would give in the classic locale. Format flags are ignored. Characters are taken from
/// the stream's buffer in blocks. The stream object itself is not changed until finish().
///
///     ReadBuffer text(in);
///     while(!text.fail())
///         use(text.token());
///     text.finish();       // state and position of `in` are now those of token-by-token reading
///
/// Each operation sets the state bits that the stream's operation would set. Once a bit is set,
/// further operations only set failbit. The end of the text is noticed when a character behind it
/// is needed: "12" at the very end is read and sets eofbit but not failbit. An exception of the
/// stream's buffer sets badbit at the character that could not be read; the characters before it
/// are delivered.
///
/// Memory: one block, 8 KiB, and the part of a token that crosses a block border, up to TokenLimit.
class OSG_FILEIO_API ReadBuffer
{
  public:
    /// Bytes taken from the stream at a time.
    static constexpr std::size_t BlockBytes = 256 * 1024;
    /// The most that lineRest() gives.
    static constexpr std::size_t LineLimit = 8191;
    /// The number of characters that token() keeps. A longer token is taken from the stream as a
    /// whole.
    static constexpr std::size_t TokenLimit = 4 * 1024 * 1024;
    /// The most characters that ignoreLine() takes.
    static constexpr UInt64 IgnoreLimit = 2147483647;

    /// Keeps a reference to `in`. Only tests need another block size.
    explicit ReadBuffer(std::istream &in, std::size_t blockSize = BlockBytes);
    ReadBuffer(ReadBuffer const &) = delete;
    ReadBuffer &operator=(ReadBuffer const &) = delete;
    /// Frees the block. Without finish() the stream stands behind the last block taken.
    ~ReadBuffer();

    // --- state, as the stream would have it ---
    std::ios_base::iostate rdstate() const { return _state; }
    bool good() const { return _state == std::ios_base::goodbit; }
    bool eof() const { return (_state & std::ios_base::eofbit) != 0; }
    bool bad() const { return (_state & std::ios_base::badbit) != 0; }
    /// failbit or badbit.
    bool fail() const { return (_state & (std::ios_base::failbit | std::ios_base::badbit)) != 0; }

    // --- formatted: white space before is skipped ---
    /// The characters up to the next white space. Empty, with failbit set, if there are none. The
    /// view is valid until the next operation.
    std::string_view token()
    {
        if(good())
        {
            char *const begin = behindSpace();
            char *p = begin;
            while(!is_stream_space(*p))
                ++p;
            if(p != _end)
            {
                _pos = p;
                return std::string_view(begin, static_cast<std::size_t>(p - begin));
            }
        }
        return tokenAtBorder();
    }
    /// Reads a float. Sets `value` to 0 and failbit where there is no number or a float cannot hold
    /// it. The characters of the number are taken from the stream even then; see OSGStreamNumber.h.
    bool readReal32(Real32 &value);
    /// Reads `count` floats. Those after a failure are 0.
    bool readReal32s(Real32 *values, std::size_t count)
    {
        for(std::size_t i = 0; i < count; ++i)
            readReal32(values[i]);
        return !fail();
    }

    // --- unformatted ---
    /// The unread characters that are in memory, possibly none. A line break stands behind them,
    /// and DigitScanReach bytes from there can be read. Valid until the next operation.
    std::string_view atHand() const { return {_pos, static_cast<std::size_t>(_end - _pos)}; }
    /// Takes characters that are at hand. The state must be good.
    void takeAtHand(std::size_t count) { _pos += count; }
    /// The rest of the line, at most LineLimit characters. The line break is not taken. Fails if
    /// there is no character. The view is valid until the next operation. The character behind it
    /// is a line break or a zero byte, and DigitScanReach bytes from there can be read.
    std::string_view lineRest();
    /// Takes everything up to and including the next line break.
    void ignoreLine(UInt64 limit = IgnoreLimit);
    /// Takes one character.
    void ignoreChar();

    // --- end ---
    /// Sets the state of the stream, and seeks back to the first unread character. False where the
    /// buffer cannot seek, so that unread characters are lost. Raises std::ios_base::failure if the
    /// stream is set to do so. To be called once, at the end.
    bool finish();

    // --- place ---
    /// The line of the next unread character. The line where the reading began is 1.
    UInt64 lineNumber() const;
    /// The word around the next unread character, or directly before it, for messages. It has up to
    /// WordReach characters on either side. May take another block from the stream.
    std::string wordHere();
    static constexpr std::size_t WordReach = 64;

    // --- progress ---
    /// Number of characters that the operations have taken.
    UInt64 bytesConsumed() const { return _fetched - static_cast<UInt64>(_end - _pos); }
    /// Number of blocks taken from the stream. While it is the same, so is the place in the stream.
    UInt64 blocksRead() const { return _blocks; }

  private:
    enum class Source
    {
        Open,
        Ended,
        Threw
    };

    char *front() { return _data.data() + WordReach; }
    bool more();
    void fetchBlock(char *&to, char *limit);
    bool available() { return _pos != _end || more(); }
    void noteSourceEnd();
    bool enter();
    bool enterBehindSpace();
    /// The first character at hand that is no white space, or the end of what is at hand.
    char *behindSpace() const
    {
        char *p = _pos;
        while(is_stream_space(*p) && p != _end)
            ++p;
        return p;
    }
    std::string_view tokenAtBorder();
    bool readLongReal32(Real32 &value);

    std::istream &_in;
    std::size_t _blockSize;
    std::ios_base::iostate _state;
    Source _source = Source::Open;
    UInt64 _fetched = 0;
    UInt64 _blocks = 0;
    UInt64 _linesBefore = 0; ///< line breaks before the first character of _data
    /// Holds the last WordReach characters before the unread part, the unread part (up to LineLimit
    /// characters and a block), a sentinel, and DigitScanReach readable bytes.
    std::vector<char, MemAllocator<char>> _data;
    char *_pos; ///< next unread character
    char *_end; ///< behind the last unread one; a line break always stands there
    std::basic_string<char, std::char_traits<char>, MemAllocator<char>> _split;
    std::vector<char, MemAllocator<char>> _cutLine;
};
} // namespace OSG
