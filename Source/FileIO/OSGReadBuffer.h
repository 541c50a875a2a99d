#pragma once

/// \file
/// Text reading for the scene file types: formatted extraction from a stream at the speed of
/// memory.

#include <ios>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "OSGBaseTypes.h"
#include "OSGDigitScan.h"
#include "OSGFileIOApi.h"
#include "OSGMemManager.h"

namespace OSG
{
/// Reads a stream from where it stands as the stream's own extraction operators would, character
/// for character, in the classic locale and whatever format flags the stream has. What it takes
/// from the stream's buffer is a block at a time; the stream itself is left alone until finish().
///
///     ReadBuffer text(in);
///     while(!text.fail())
///         use(text.token());
///     text.finish();       // state and position of `in` are now those of token-by-token reading
///
/// Every operation leaves the state bits that the stream's operation of the same kind leaves, and
/// does nothing but set failbit once one of the bits is set. The end of the text is noticed when a
/// character behind it is looked at: "12" at the very end is read and sets eofbit, not failbit. An
/// exception of the stream's buffer becomes badbit at the character that could not be had; what
/// came before it is delivered.
///
/// Memory: a block, 8 KiB, and whatever part of one token lies across two blocks, up to tokenLimit.
class OSG_FILEIO_API ReadBuffer
{
  public:
    /// Bytes taken from the stream at a time.
    static constexpr std::size_t blockBytes = 256 * 1024;
    /// The most that lineRest() gives.
    static constexpr std::size_t lineLimit = 8191;
    /// Of a longer token this many characters are kept; all of it is taken from the stream.
    static constexpr std::size_t tokenLimit = 4 * 1024 * 1024;
    /// The most characters that ignoreLine() takes.
    static constexpr UInt64 ignoreLimit = 2147483647;

    /// Keeps a reference to `in`. Only tests have a reason to ask for other blocks.
    explicit ReadBuffer(std::istream &in, std::size_t blockSize = blockBytes);
    ReadBuffer(ReadBuffer const &) = delete;
    ReadBuffer &operator=(ReadBuffer const &) = delete;
    /// Frees the block. The stream is left wherever block reading took it unless finish() was
    /// called.
    ~ReadBuffer();

    // --- state, as the stream would have it ---
    std::ios_base::iostate rdstate() const { return _state; }
    bool good() const { return _state == std::ios_base::goodbit; }
    bool eof() const { return (_state & std::ios_base::eofbit) != 0; }
    bool bad() const { return (_state & std::ios_base::badbit) != 0; }
    /// failbit or badbit.
    bool fail() const { return (_state & (std::ios_base::failbit | std::ios_base::badbit)) != 0; }

    // --- formatted: white space before is skipped ---
    /// The characters up to the next white space; empty if there are none, with failbit set. The
    /// view holds until the next operation.
    std::string_view token();
    /// A float; 0 where there is none that a float can hold, with failbit set. What looked like a
    /// number is taken from the stream even so: see OSGStreamNumber.h.
    bool readReal32(Real32 &value);
    /// `count` floats in a row; those behind a failure are 0.
    bool readReal32s(Real32 *values, std::size_t count);

    // --- unformatted ---
    /// What is left of the line, without the line break, which is not taken; at most lineLimit
    /// characters. Fails if that is nothing. The view holds until the next operation, and the
    /// character behind it is a line break or a zero byte; DigitScanReach bytes from that one on
    /// can be read.
    std::string_view lineRest();
    /// Takes everything up to and including the next line break.
    void ignoreLine(UInt64 limit = ignoreLimit);
    /// Takes one character.
    void ignoreChar();

    // --- end ---
    /// Gives the stream the state, and, where its buffer can seek, the unread rest back. False if
    /// that rest is lost. Raises std::ios_base::failure if the stream is set to, like any reading
    /// operation would. To be called once, last.
    bool finish();

    // --- place ---
    /// Line of the next unread character, counted from 1 where the reading began.
    UInt64 lineNumber() const;
    /// The word that the next unread character stands in or directly behind, for messages: up to
    /// wordReach characters on either side of it. May take another block from the stream.
    std::string wordHere();
    static constexpr std::size_t wordReach = 64;

    // --- progress ---
    /// Characters that the operations took.
    UInt64 bytesConsumed() const { return _fetched - static_cast<UInt64>(_end - _pos); }
    /// Blocks taken from the stream so far. The place in the stream is the same until it grows.
    UInt64 blocksRead() const { return _blocks; }

  private:
    enum class Source
    {
        Open,
        Ended,
        Threw
    };

    char *front() { return _data.data() + wordReach; }
    bool more();
    void fetchBlock(char *&to, char *limit);
    bool available() { return _pos != _end || more(); }
    void noteSourceEnd();
    bool enter();
    bool enterBehindSpace();
    std::string_view splitToken(char const *scanned);
    bool readNextReal32(Real32 &value);
    bool readLongReal32(Real32 &value);

    std::istream &_in;
    std::size_t _blockSize;
    std::ios_base::iostate _state;
    Source _source = Source::Open;
    UInt64 _fetched = 0;
    UInt64 _blocks = 0;
    UInt64 _linesBefore = 0; ///< line breaks before the first character of _data
    /// The last wordReach characters before the block, then room for a block behind what lineRest()
    /// may have to keep together, a sentinel, and the reach of digit scans.
    std::vector<char, MemAllocator<char>> _data;
    char *_pos; ///< next unread character
    char *_end; ///< behind the last unread one; a line break always stands there
    std::basic_string<char, std::char_traits<char>, MemAllocator<char>> _split;
    std::vector<char, MemAllocator<char>> _cutLine;
};
} // namespace OSG
