#include "OSGOutStream.h"

#include <charconv>

namespace OSG
{
namespace
{
template <class T>
void put_number(std::ostream &out, T value)
{
    char text[32];
    auto const end = std::to_chars(text, text + sizeof(text), value).ptr;
    out.write(text, end - text);
}
} // namespace

OutStream &OutStream::operator<<(int value)
{
    put_number(_out, value);
    return *this;
}

OutStream &OutStream::operator<<(UInt32 value)
{
    put_number(_out, value);
    return *this;
}

OutStream &OutStream::operator<<(UInt64 value)
{
    put_number(_out, value);
    return *this;
}

OutStream &OutStream::operator<<(Real32 value)
{
    put_number(_out, value);
    return *this;
}

OutStream &OutStream::operator<<(void const *value)
{
    _out << value;
    return *this;
}

OutStream &OutStream::operator<<(char const *text)
{
    if(text != nullptr)
        _out << text;
    return *this;
}

OutStream &OutStream::operator<<(std::string const &text)
{
    _out << text;
    return *this;
}
} // namespace OSG
