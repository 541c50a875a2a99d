#pragma once

#include <charconv>
#include <concepts>
#include <ostream>
#include <string_view>
#include <vector>

namespace Tool
{
/// Writes one JSON value to a stream as it goes, so that a scene of any depth and size takes no
/// memory here. What comes out is UTF-8; bytes that are none become U+FFFD.
///
/// Numbers have the shortest form that reads back to the same value of their own type: a 32-bit
/// 0.1 is written as 0.1. Not-a-number and infinities are the strings "nan", "inf", "-inf".
///
/// Calls have to make sense in their order (a key in an object only, a value after each key); they
/// are not checked.
class JsonWriter
{
  public:
    explicit JsonWriter(std::ostream &out)
        : _out(out)
    {
    }

    JsonWriter &beginObject() { return open('{'); }
    JsonWriter &endObject() { return close('}'); }
    JsonWriter &beginArray() { return open('['); }
    JsonWriter &endArray() { return close(']'); }
    JsonWriter &key(std::string_view name);

    JsonWriter &value(float number);
    JsonWriter &value(double number);
    JsonWriter &value(bool truth);
    JsonWriter &value(std::string_view text);
    JsonWriter &value(char const *text) { return value(std::string_view(text)); }
    template <std::integral T>
    JsonWriter &value(T number)
    {
        char digits[24];
        auto const end = std::to_chars(digits, digits + sizeof(digits), number).ptr;
        return raw({digits, static_cast<std::size_t>(end - digits)});
    }
    JsonWriter &null() { return raw("null"); }

    /// The first `count` elements of anything with operator[], as an array.
    template <class Values>
    JsonWriter &array(Values const &values, std::size_t count)
    {
        beginArray();
        for(std::size_t i = 0; i < count; ++i)
            value(values[i]);
        return endArray();
    }

    template <class T>
    JsonWriter &member(std::string_view name, T const &content)
    {
        return key(name).value(content);
    }

  private:
    JsonWriter &open(char bracket);
    JsonWriter &close(char bracket);
    JsonWriter &raw(std::string_view text);
    void separate();

    std::ostream &_out;
    std::vector<bool> _hasElements; // one per open bracket
    bool _afterKey = false;
};
} // namespace Tool
