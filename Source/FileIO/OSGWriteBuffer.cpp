#include "OSGWriteBuffer.h"

#include <charconv>
#include <cstring>
#include <locale>
#include <ostream>
#include <sstream>

#include "OSGSixDigits.h"

namespace OSG
{
namespace
{
constexpr std::size_t WholeNumberRoom = 10; // digits of 4294967295

bool has_plain_format(std::ios const &stream)
{
    return stream.flags() == (std::ios::skipws | std::ios::dec) && stream.precision() == 6 &&
           stream.getloc() == std::locale::classic();
}
} // namespace

WriteBuffer::WriteBuffer(std::ostream &out)
    : _out(out)
    , _block(BlockBytes)
    , _end(_block.data())
{
    if(has_plain_format(out))
        return;
    _format = std::make_unique<std::ostringstream>();
    _format->copyfmt(out);
    _format->exceptions(std::ios::goodbit);
    _format->width(0);
}

WriteBuffer::~WriteBuffer() = default;

WriteBuffer &WriteBuffer::put(std::string_view text)
{
    while(!text.empty())
    {
        makeRoom(1);
        std::size_t const room = static_cast<std::size_t>(_block.data() + BlockBytes - _end);
        std::string_view const part = text.substr(0, room);
        std::memcpy(_end, part.data(), part.size());
        _end += part.size();
        text.remove_prefix(part.size());
    }
    return *this;
}

WriteBuffer &WriteBuffer::put(UInt32 number)
{
    makeRoom(WholeNumberRoom);
    _end = std::to_chars(_end, _end + WholeNumberRoom, number).ptr;
    return *this;
}

WriteBuffer &WriteBuffer::put(Real32 number)
{
    if(_format != nullptr)
    {
        _format->str({});
        *_format << number;
        return put(_format->view());
    }
    makeRoom(SixDigitsRoom);
    _end = write_six_digits(_end, number);
    return *this;
}

void WriteBuffer::empty()
{
    _out.write(_block.data(), _end - _block.data());
    _end = _block.data();
}

void WriteBuffer::flush()
{
    empty();
    _out.flush();
}
} // namespace OSG
