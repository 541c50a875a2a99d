#include "ChunkReader.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstring>

namespace OSG::Lib3ds
{
// --- messages ---

void Messages::log(Lib3dsLogLevel level, std::string const &text) const
{
    if(_io.log_func != nullptr)
        _io.log_func(_io.self, level, 0, text.c_str());
}

void Messages::fail(std::string const &text) const
{
    log(LIB3DS_LOG_ERROR, text);
    throw DamagedFile();
}

void Messages::warn(std::string const &text) const { log(LIB3DS_LOG_WARN, text); }

void Messages::passOver(unsigned kind) const
{
    log(LIB3DS_LOG_INFO, "Chunk " + hex(kind) + " is passed over");
}

std::string hex(unsigned kind)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%04x", kind);
    return text;
}

// --- values ---

void Chunk::failShort() const
{
    _messages.fail("Chunk " + hex(_kind) + " is shorter than what it should hold");
}

void Chunk::require(std::uint64_t count, std::size_t size) const
{
    if(count > left() / size)
        failShort();
}

unsigned char const *Chunk::take(std::size_t bytes)
{
    if(bytes > left())
        failShort();
    unsigned char const *const taken = _next;
    _next += bytes;
    return taken;
}

unsigned char Chunk::byte() { return *take(1); }

unsigned short Chunk::word()
{
    unsigned char const *const bytes = take(2);
    return static_cast<unsigned short>(bytes[0] | bytes[1] << 8);
}

std::uint32_t Chunk::dword()
{
    std::uint32_t const low = word();
    return low | std::uint32_t(word()) << 16;
}

float Chunk::real() { return std::bit_cast<float>(dword()); }

void Chunk::reals(float *values, std::size_t count)
{
    require(count, 4);
    if constexpr(std::endian::native == std::endian::little)
    {
        // No memory is copied for no values: `values` may be null then.
        if(count != 0)
            std::memcpy(values, take(4 * count), 4 * count);
        return;
    }
    for(std::size_t i = 0; i < count; ++i)
        values[i] = real();
}

void Chunk::name(char (&text)[NameSize])
{
    std::size_t const most = std::min(left(), NameSize);
    auto const *const end =
        static_cast<unsigned char const *>(most != 0 ? std::memchr(_next, 0, most) : nullptr);
    if(end == nullptr)
        _messages.fail("A name in chunk " + hex(_kind) + " has no end");
    std::memset(text, 0, NameSize);
    std::memcpy(text, _next, static_cast<std::size_t>(end - _next));
    _next = end + 1;
}

// --- chunks ---

Chunk Chunk::child()
{
    unsigned const kind = word();
    std::uint32_t const length = dword();
    if(length < HeaderSize)
        _messages.fail("Chunk " + hex(kind) + " is shorter than its header");
    std::size_t size = length - HeaderSize;
    if(size > left())
    {
        _messages.warn("Chunk " + hex(kind) + " is longer than chunk " + hex(_kind) +
                       " and is cut");
        size = left();
    }
    unsigned char const *const begin = take(size);
    return Chunk(kind, begin, begin + size, _messages);
}

std::size_t OutermostChunk::readMore(std::size_t bytes)
{
    std::size_t const before = _bytes.size();
    _bytes.resize(before + bytes);
    std::size_t const got = std::min(_io.read_func(_io.self, _bytes.data() + before, bytes), bytes);
    _bytes.resize(before + got);
    return got;
}

OutermostChunk::OutermostChunk(Lib3dsIo const &io, Messages const &messages)
    : _io(io)
    , _messages(messages)
{
    if(readMore(Chunk::HeaderSize) < Chunk::HeaderSize)
        _messages.fail("There is no chunk");
    Chunk header(0, _bytes.data(), _bytes.data() + _bytes.size(), _messages);
    _kind = header.word();
    std::uint32_t const length = header.dword();
    if(length < Chunk::HeaderSize)
        _messages.fail("Chunk " + hex(_kind) + " is shorter than its header");
    _size = length - Chunk::HeaderSize;
}

// The length of a damaged file may be anything. Memory grows with the bytes that are there.
Chunk OutermostChunk::read()
{
    constexpr std::size_t Block = 1024 * 1024;
    _bytes.clear();
    while(_bytes.size() < _size)
    {
        std::size_t const wanted = std::min(std::max(Block, _bytes.size()), _size - _bytes.size());
        if(readMore(wanted) < wanted)
        {
            _messages.warn("Chunk " + hex(_kind) + " is longer than the file and is cut");
            break;
        }
    }
    return Chunk(_kind, _bytes.data(), _bytes.data() + _bytes.size(), _messages);
}
} // namespace OSG::Lib3ds
