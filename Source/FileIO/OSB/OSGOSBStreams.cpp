#include "OSGOSBStreams.h"

#include <istream>
#include <ostream>

namespace OSG
{
namespace
{
constexpr std::size_t BlockBytes = 64 * 1024;
} // namespace

// --- OSBInput ---

OSBInput::OSBInput(std::istream &in)
    : _in(in)
    , _block(BlockBytes)
{
}

OSBInput::~OSBInput()
{
    if(_at == _end)
        return;
    try
    {
        std::streambuf &source = *_in.rdbuf();
        while(_at != _end && source.sungetc() != std::char_traits<char>::eof())
            --_end;
        if(_at != _end)
            source.pubseekoff(-static_cast<std::streamoff>(_end - _at), std::ios_base::cur,
                              std::ios_base::in);
    }
    catch(...)
    {
        // The scene has been read. A stream that cannot be positioned behind it has its own failure
        // state.
    }
}

void OSBInput::read(void *target, UInt64 size)
{
    auto *const bytes = static_cast<char *>(target);
    UInt64 done = takeReady(bytes, size);
    while(done < size)
    {
        UInt64 const now = size - done < BlockBytes && fill()
                               ? takeReady(bytes + done, size - done)
                               : takeFromStream(bytes + done, size - done);
        if(now == 0)
        {
            _in.setstate(std::ios_base::eofbit | std::ios_base::failbit);
            throw ReadError("BinaryDataHandler: the stream ends early");
        }
        done += now;
    }
}

UInt64 OSBInput::takeReady(char *target, UInt64 size)
{
    std::size_t const now = static_cast<std::size_t>(std::min<UInt64>(size, _end - _at));
    if(now != 0)
        std::memcpy(target, _block.data() + _at, now);
    _at += now;
    return now;
}

UInt64 OSBInput::takeFromStream(char *target, UInt64 size)
{
    if(!_in.good())
        return 0;
    try
    {
        return static_cast<UInt64>(_in.rdbuf()->sgetn(target, static_cast<std::streamsize>(size)));
    }
    catch(...)
    {
        _in.setstate(std::ios_base::badbit);
        return 0;
    }
}

// Fills the block from the stream's buffer. False where the buffer is empty: at the end, or in a
// stream without a buffer.
bool OSBInput::fill()
{
    if(!_in.good())
        return false;
    try
    {
        std::streambuf &source = *_in.rdbuf();
        if(source.sgetc() == std::char_traits<char>::eof())
            return false;
        std::streamsize const ready = source.in_avail();
        if(ready <= 0)
            return false;
        _at = 0;
        _end = 0;
        _end = static_cast<std::size_t>(source.sgetn(
            _block.data(), std::min(ready, static_cast<std::streamsize>(_block.size()))));
        return _end != 0;
    }
    catch(...)
    {
        _in.setstate(std::ios_base::badbit);
        return false;
    }
}

// --- OSBOutput ---

OSBOutput::OSBOutput(std::ostream &out)
    : _out(out)
    , _block(BlockBytes)
{
}

OSBOutput::~OSBOutput() = default;

void OSBOutput::finish()
{
    writeThrough(_block.data(), _end);
    _end = 0;
}

void OSBOutput::write(void const *source, UInt64 size)
{
    if(size > BlockBytes - _end)
        finish();
    if(size > BlockBytes)
    {
        writeThrough(source, size);
        return;
    }
    if(size != 0)
        std::memcpy(_block.data() + _end, source, size);
    _end += size;
}

void OSBOutput::writeThrough(void const *source, UInt64 size)
{
    if(!_out.write(static_cast<char const *>(source), static_cast<std::streamsize>(size)))
        throw WriteError("BinaryDataHandler: the stream cannot be written");
}

// --- OSBContent ---

OSBContent::~OSBContent() = default;

void OSBContent::read(void *target, UInt64 size)
{
    if(size > _rest)
        throw ReadError("BinaryDataHandler: the bytes end early");
    _storage.get(target, size);
    _rest -= size;
}

void OSBContent::skipRest()
{
    UInt8 passedOver[512];
    while(_rest != 0)
        get(passedOver, std::min<UInt64>(_rest, sizeof(passedOver)));
}

// --- OSBScratch ---

OSBScratch::~OSBScratch() = default;

void OSBScratch::write(void const *source, UInt64 size)
{
    auto const *const bytes = static_cast<UInt8 const *>(source);
    _bytes.insert(_bytes.end(), bytes, bytes + size);
}
} // namespace OSG
