#include "OSGBinaryDataHandler.h"

#include <istream>
#include <limits>
#include <ostream>

namespace OSG
{
using Handler = ExceptionBinaryDataHandler;

Handler::ReadError::ReadError(char const *what)
    : std::runtime_error(what)
{
}
Handler::ReadError::~ReadError() = default;
Handler::WriteError::WriteError(char const *what)
    : std::runtime_error(what)
{
}
Handler::WriteError::~WriteError() = default;

Handler::~ExceptionBinaryDataHandler() = default;

void Handler::read(void *, UInt64) { throw ReadError("BinaryDataHandler: nothing to read from"); }

void Handler::write(void const *, UInt64)
{
    throw WriteError("BinaryDataHandler: nothing to write to");
}

UInt32 Handler::checkedCount(UInt64 count)
{
    if(count > std::numeric_limits<UInt32>::max())
        throw WriteError("BinaryDataHandler: too long for a 32-bit count");
    return static_cast<UInt32>(count);
}

void Handler::putValue(std::string const &value)
{
    UInt64 const size = UInt64(value.size()) + 1; // with the zero byte
    putValue(checkedCount(size));
    put(value.c_str(), size);
}

void Handler::getValue(std::string &value)
{
    UInt32 size = 0;
    getValue(size);
    std::string text;
    for(UInt64 rest = size; rest > 0;)
    {
        std::size_t const now = static_cast<std::size_t>(std::min(rest, BlockSize));
        std::size_t const before = text.size();
        text.resize(before + now);
        get(text.data() + before, now);
        rest -= now;
    }
    if(!text.empty())
        text.pop_back();
    value.swap(text);
}

StreamBinaryDataHandler::StreamBinaryDataHandler(std::istream &in)
    : _in(&in)
{
}
StreamBinaryDataHandler::StreamBinaryDataHandler(std::ostream &out)
    : _out(&out)
{
}
StreamBinaryDataHandler::StreamBinaryDataHandler(std::iostream &both)
    : _in(&both)
    , _out(&both)
{
}
StreamBinaryDataHandler::~StreamBinaryDataHandler() = default;

void StreamBinaryDataHandler::read(void *target, UInt64 size)
{
    if(_in == nullptr)
        throw ReadError("BinaryDataHandler: the stream is for writing");
    if(size > UInt64(std::numeric_limits<std::streamsize>::max()) ||
       !_in->read(static_cast<char *>(target), static_cast<std::streamsize>(size)))
        throw ReadError("BinaryDataHandler: the stream ends early");
}

void StreamBinaryDataHandler::write(void const *source, UInt64 size)
{
    if(_out == nullptr)
        throw WriteError("BinaryDataHandler: the stream is for reading");
    if(!_out->write(static_cast<char const *>(source), static_cast<std::streamsize>(size)))
        throw WriteError("BinaryDataHandler: the stream cannot be written");
}

MemoryBinaryDataHandler::MemoryBinaryDataHandler() = default;
MemoryBinaryDataHandler::MemoryBinaryDataHandler(std::vector<UInt8> bytes)
    : _bytes(std::move(bytes))
{
}
MemoryBinaryDataHandler::~MemoryBinaryDataHandler() = default;

void MemoryBinaryDataHandler::read(void *target, UInt64 size)
{
    UInt64 const now = std::min(size, getRest());
    if(now != 0)
        std::memcpy(target, _bytes.data() + _position, now);
    _position += now;
    if(now < size)
        throw ReadError("BinaryDataHandler: the bytes end early");
}

void MemoryBinaryDataHandler::write(void const *source, UInt64 size)
{
    auto const *const bytes = static_cast<UInt8 const *>(source);
    _bytes.insert(_bytes.end(), bytes, bytes + size);
}
} // namespace OSG
