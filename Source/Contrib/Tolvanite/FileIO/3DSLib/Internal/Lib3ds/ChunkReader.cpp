#include "ChunkReader.h"

#include <algorithm>
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

OutermostChunk::OutermostChunk(Lib3dsIo const &io, Messages const &messages)
    : _io(io)
    , _messages(messages)
{
    unsigned char bytes[Chunk::HeaderSize];
    if(read(bytes, sizeof bytes) < sizeof bytes)
        _messages.fail("There is no chunk");
    Chunk header(0, bytes, bytes + sizeof bytes, _messages);
    _kind = header.word();
    std::uint32_t const length = header.dword();
    if(length < Chunk::HeaderSize)
        _messages.fail("Chunk " + hex(_kind) + " is shorter than its header");
    _size = length - Chunk::HeaderSize;
}

std::size_t OutermostChunk::read(unsigned char *to, std::size_t bytes) const
{
    return std::min(_io.read_func(_io.self, to, bytes), bytes);
}

// 0 where the stream does not know. A stream that cannot tell where it is is not asked to seek,
// since that would end it.
std::size_t OutermostChunk::bytesAhead() const
{
    long const here = _io.tell_func(_io.self);
    if(here < 0 || _io.seek_func(_io.self, 0, LIB3DS_SEEK_END) != 0)
        return 0;
    long const end = _io.tell_func(_io.self);
    _io.seek_func(_io.self, here, LIB3DS_SEEK_SET);
    return end > here ? static_cast<std::size_t>(end - here) : 0;
}

// The length of a damaged file may be anything. Memory grows with the bytes that are there.
Chunk OutermostChunk::read()
{
    constexpr std::size_t Block = 1024 * 1024;
    std::size_t const ahead = bytesAhead();
    std::size_t const size = ahead != 0 ? std::min(_size, ahead) : _size;
    std::size_t count = 0;
    for(std::size_t wanted = ahead != 0 ? size : std::min(size, Block); count < size;
        wanted = std::min(size, 2 * wanted))
    {
        MemArray<unsigned char> longer(wanted);
        std::copy_n(_bytes.data(), count, longer.data());
        _bytes = std::move(longer);
        count += read(_bytes.data() + count, wanted - count);
        if(count < wanted)
            break;
    }
    if(count < _size)
        _messages.warn("Chunk " + hex(_kind) + " is longer than the file and is cut");
    return Chunk(_kind, _bytes.data(), _bytes.data() + count, _messages);
}
} // namespace OSG::Lib3ds
