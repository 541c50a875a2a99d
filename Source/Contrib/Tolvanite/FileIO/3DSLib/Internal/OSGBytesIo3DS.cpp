#include "OSGBytesIo3DS.h"

#include <algorithm>
#include <cstring>
#include <istream>
#include <limits>

#include "OSGSceneFileHandler.h"

namespace OSG
{
// Memory grows with the bytes that are there.
BytesIo3DS::BytesIo3DS(std::istream &in)
{
    constexpr std::size_t Block = 1024 * 1024;
    while(in.good())
    {
        std::size_t const size = _bytes.size();
        _bytes.resize(size + Block);
        in.read(_bytes.data() + size, Block);
        _bytes.resize(size + static_cast<std::size_t>(in.gcount()));
        SceneFileHandlerBase::the()->updateReadProgress();
    }
}

void BytesIo3DS::connect(Lib3dsIo &io)
{
    io.self = this;
    io.seek_func = &seek;
    io.tell_func = &tell;
    io.read_func = &read;
}

long BytesIo3DS::seek(void *self, long offset, Lib3dsIoSeek origin)
{
    BytesIo3DS &bytes = *static_cast<BytesIo3DS *>(self);
    long const from = origin == LIB3DS_SEEK_CUR   ? static_cast<long>(bytes._at)
                      : origin == LIB3DS_SEEK_END ? static_cast<long>(bytes._bytes.size())
                                                  : 0;
    if(offset < -from || offset > std::numeric_limits<long>::max() - from)
        return -1;
    bytes._at = static_cast<std::size_t>(from + offset);
    return 0;
}

long BytesIo3DS::tell(void *self)
{
    return static_cast<long>(static_cast<BytesIo3DS *>(self)->_at);
}

std::size_t BytesIo3DS::read(void *self, void *buffer, std::size_t size)
{
    BytesIo3DS &bytes = *static_cast<BytesIo3DS *>(self);
    std::size_t const left = bytes._bytes.size() - std::min(bytes._at, bytes._bytes.size());
    std::size_t const count = std::min(size, left);
    if(count != 0)
        std::memcpy(buffer, bytes._bytes.data() + bytes._at, count);
    if(count < size)
    {
        std::memset(static_cast<char *>(buffer) + count, 0, size - count);
        bytes._hasEndedEarly = true;
    }
    bytes._at += count;
    return count;
}
} // namespace OSG
