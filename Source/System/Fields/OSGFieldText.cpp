#include "OSGFieldText.h"

#include <charconv>
#include <cstring>

namespace OSG
{
namespace
{
bool is_separator(char c) { return c == ' ' || c == ',' || c == '\t' || c == '\n' || c == '\r'; }

// Reads exactly `count` numbers; false for anything else in the text.
template <class T>
bool numbers_from_text(char const *text, T *values, int count)
{
    if(text == nullptr)
        return false;
    char const *at = text;
    char const *const end = text + std::strlen(text);
    for(int i = 0; i < count; ++i)
    {
        while(at != end && is_separator(*at))
            ++at;
        auto const [next, error] = std::from_chars(at, end, values[i]);
        if(error != std::errc())
            return false;
        // "1.0f", as a literal in a description is written.
        at = std::is_floating_point_v<T> && next != end && *next == 'f' ? next + 1 : next;
    }
    while(at != end && is_separator(*at))
        ++at;
    return at == end;
}

void numbers_to_text(OutStream &out, Real32 const *values, int count)
{
    for(int i = 0; i < count; ++i)
        (i == 0 ? out : out << ", ") << values[i];
}

template <class T>
bool number_from_text(char const *text, T &value)
{
    T read{};
    if(!numbers_from_text(text, &read, 1))
        return false;
    value = read;
    return true;
}

template <int Count, class T>
bool tuple_from_text(char const *text, T &value)
{
    Real32 read[Count];
    if(!numbers_from_text(text, read, Count))
        return false;
    for(int i = 0; i < Count; ++i)
        value[i] = read[i];
    return true;
}

template <int Count, class T>
void tuple_to_text(OutStream &out, T const &value)
{
    Real32 values[Count];
    for(int i = 0; i < Count; ++i)
        values[i] = value[i];
    numbers_to_text(out, values, Count);
}
} // namespace

void value_to_text(OutStream &out, std::string const &value) { out << value; }
bool value_from_text(char const *text, std::string &value)
{
    if(text == nullptr)
        return false;
    value = text;
    return true;
}

void value_to_text(OutStream &out, bool const &value) { out << (value ? "TRUE" : "FALSE"); }
bool value_from_text(char const *text, bool &value)
{
    // Descriptions write their defaults in small letters.
    auto const is = [text](char const *other)
    { return text != nullptr && std::strcmp(text, other) == 0; };
    if(is("TRUE") || is("true") || is("1"))
        value = true;
    else if(is("FALSE") || is("false") || is("0"))
        value = false;
    else
        return false;
    return true;
}

void value_to_text(OutStream &out, UInt8 const &value) { out << UInt32(value); }
bool value_from_text(char const *text, UInt8 &value) { return number_from_text(text, value); }
void value_to_text(OutStream &out, UInt16 const &value) { out << UInt32(value); }
bool value_from_text(char const *text, UInt16 &value) { return number_from_text(text, value); }
void value_to_text(OutStream &out, UInt32 const &value) { out << value; }
bool value_from_text(char const *text, UInt32 &value) { return number_from_text(text, value); }
void value_to_text(OutStream &out, UInt64 const &value) { out << value; }
bool value_from_text(char const *text, UInt64 &value) { return number_from_text(text, value); }
void value_to_text(OutStream &out, Int32 const &value) { out << value; }
bool value_from_text(char const *text, Int32 &value) { return number_from_text(text, value); }
void value_to_text(OutStream &out, Real32 const &value) { out << value; }
bool value_from_text(char const *text, Real32 &value) { return number_from_text(text, value); }

void value_to_text(OutStream &out, Pnt3f const &value) { tuple_to_text<3>(out, value); }
bool value_from_text(char const *text, Pnt3f &value) { return tuple_from_text<3>(text, value); }
void value_to_text(OutStream &out, Vec2f const &value) { tuple_to_text<2>(out, value); }
bool value_from_text(char const *text, Vec2f &value) { return tuple_from_text<2>(text, value); }
void value_to_text(OutStream &out, Vec3f const &value) { tuple_to_text<3>(out, value); }
bool value_from_text(char const *text, Vec3f &value) { return tuple_from_text<3>(text, value); }
void value_to_text(OutStream &out, Color3f const &value) { tuple_to_text<3>(out, value); }
bool value_from_text(char const *text, Color3f &value) { return tuple_from_text<3>(text, value); }
void value_to_text(OutStream &out, Color4f const &value) { tuple_to_text<4>(out, value); }
bool value_from_text(char const *text, Color4f &value) { return tuple_from_text<4>(text, value); }

void value_to_text(OutStream &out, Matrix const &value)
{
    Real32 values[16];
    for(int i = 0; i < 16; ++i)
        values[i] = value[i / 4][i % 4];
    numbers_to_text(out, values, 16);
}

bool value_from_text(char const *text, Matrix &value)
{
    Real32 values[16];
    if(!numbers_from_text(text, values, 16))
        return false;
    for(int i = 0; i < 16; ++i)
        value[i / 4][i % 4] = values[i];
    return true;
}

namespace
{
// Takes `word` off the front of a text.
bool take_word(char const *&text, char const *word)
{
    while(is_separator(*text))
        ++text;
    std::size_t const length = std::strlen(word);
    if(std::strncmp(text, word, length) != 0)
        return false;
    text += length;
    return true;
}
} // namespace

// The flags of the box as words, then its two corners.
void value_to_text(OutStream &out, BoxVolume const &value)
{
    out << (value.isEmpty() ? "empty " : "") << (value.isInfinite() ? "infinite " : "")
        << (value.isValid() ? "" : "invalid ") << (value.isStatic() ? "static " : "");
    Real32 const values[6] = {value.getMin()[0], value.getMin()[1], value.getMin()[2],
                              value.getMax()[0], value.getMax()[1], value.getMax()[2]};
    numbers_to_text(out, values, 6);
}

bool value_from_text(char const *text, BoxVolume &value)
{
    if(text == nullptr)
        return false;
    bool const empty = take_word(text, "empty");
    bool const infinite = take_word(text, "infinite");
    bool const valid = !take_word(text, "invalid");
    bool const fixed = take_word(text, "static");
    Real32 read[6] = {};
    bool const cornersMayLack = empty || infinite;
    if(!numbers_from_text(text, read, 6) && !(cornersMayLack && numbers_from_text(text, read, 0)))
        return false;
    value.setBounds(Pnt3f(read[0], read[1], read[2]), Pnt3f(read[3], read[4], read[5]));
    value.setInfinite(infinite);
    if(empty)
        value.setEmpty();
    value.setValid(valid);
    value.setStatic(fixed);
    return true;
}
} // namespace OSG
