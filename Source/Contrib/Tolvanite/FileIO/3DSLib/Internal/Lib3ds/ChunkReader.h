#pragma once

/// \file
/// The bytes of a 3DS file as nested chunks.
///
/// A chunk is a header of six bytes, two for its kind and four for its length with the header, and
/// what stands in it. Numbers are little-endian.

#include <bit>
#include <cstdint>
#include <string>

#include "OSGMemArray.h"
#include "lib3ds.h"

namespace OSG::Lib3ds
{
/// Ends the read. The message has been logged.
struct DamagedFile
{
};

/// Tells the host what happens, through the log function that it gave.
class Messages
{
  public:
    explicit Messages(Lib3dsIo const &io)
        : _io(io)
    {
    }

    /// Logs an error and raises DamagedFile.
    [[noreturn]] void fail(std::string const &text) const;
    void warn(std::string const &text) const;
    /// A chunk that nobody reads is passed over.
    void passOver(unsigned kind) const;

  private:
    void log(Lib3dsLogLevel level, std::string const &text) const;

    Lib3dsIo const &_io;
};

/// "0x4d4d".
std::string hex(unsigned kind);

inline unsigned short word_at(unsigned char const *bytes)
{
    return static_cast<unsigned short>(bytes[0] | bytes[1] << 8);
}
inline std::uint32_t dword_at(unsigned char const *bytes)
{
    return word_at(bytes) | std::uint32_t(word_at(bytes + 2)) << 16;
}

/// What stands in a chunk, read from the front. A read beyond the end raises DamagedFile.
class Chunk
{
  public:
    static constexpr std::size_t HeaderSize = 6;
    static constexpr std::size_t NameSize = 64; ///< with the NUL at its end

    Chunk(unsigned kind, unsigned char const *begin, unsigned char const *end,
          Messages const &messages)
        : _kind(kind)
        , _next(begin)
        , _end(end)
        , _messages(messages)
    {
    }

    unsigned kind() const { return _kind; }
    std::size_t left() const { return static_cast<std::size_t>(_end - _next); }
    Messages const &messages() const { return _messages; }

    // --- values ---
    unsigned short word() { return word_at(take(2)); }
    std::uint32_t dword() { return dword_at(take(4)); }
    float real() { return std::bit_cast<float>(dword()); }
    unsigned char byte() { return *take(1); }
    void reals(float *values, std::size_t count);
    /// Makes sure that `count` parts of `size` bytes are there.
    void require(std::uint64_t count, std::size_t size) const;
    /// Takes `count` parts of `size` bytes at once.
    unsigned char const *parts(std::size_t count, std::size_t size)
    {
        require(count, size);
        return take(count * size);
    }
    /// A text that ends with a NUL within the chunk and within NameSize bytes.
    void name(char (&text)[NameSize]);

    // --- chunks in the chunk ---
    /// Whether there is room for another one.
    bool hasChild() const { return left() >= HeaderSize; }
    /// Takes the next one. One that is longer than what is left is cut, with a warning.
    Chunk child();
    /// Takes all that are left. `read(Chunk &child)` is false for a chunk that it does not know,
    /// which is passed over. The result is whether it knew one.
    template <class Read>
    bool readChildren(Read read)
    {
        bool knewOne = false;
        while(hasChild())
        {
            Chunk part = child();
            bool const isKnown = read(part);
            knewOne = knewOne || isKnown;
            if(!isKnown)
                _messages.passOver(part.kind());
        }
        return knewOne;
    }

  private:
    [[noreturn]] void failShort() const;
    unsigned char const *take(std::size_t bytes)
    {
        if(bytes > left())
            failShort();
        unsigned char const *const taken = _next;
        _next += bytes;
        return taken;
    }

    unsigned _kind;
    unsigned char const *_next;
    unsigned char const *_end;
    Messages const &_messages;
};

/// The outermost chunk of a stream.
class OutermostChunk
{
  public:
    /// Reads the header from where the stream stands.
    OutermostChunk(Lib3dsIo const &io, Messages const &messages);

    unsigned kind() const { return _kind; }
    /// Reads what stands in the chunk, which the object keeps.
    Chunk read();

  private:
    std::size_t bytesAhead() const;
    std::size_t read(unsigned char *to, std::size_t bytes) const;

    Lib3dsIo const &_io;
    Messages const &_messages;
    unsigned _kind = 0;
    std::size_t _size = 0;          // as the header has it, without the header
    MemArray<unsigned char> _bytes; // without the header
};
} // namespace OSG::Lib3ds
