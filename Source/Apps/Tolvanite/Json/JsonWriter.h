#pragma once

#include <charconv>
#include <concepts>
#include <ostream>
#include <string_view>
#include <vector>

namespace Tool
{
/// Writes one JSON value to a stream, piece by piece, so that the text of a large scene needs no
/// memory. The output is UTF-8; invalid bytes become U+FFFD.
///
/// A number is written in the shortest form that reads back to the same value of its own type: a
/// 32-bit 0.1 is written as 0.1. NaN and infinities become the strings "nan", "inf", "-inf".
///
/// The order of calls has to give valid JSON (a key only within an object, a value after each key).
/// It is not checked.
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

    /// Writes the first `count` elements of anything with operator[] as an array.
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
    std::vector<bool> _hasElements; // an entry per open bracket
    bool _afterKey = false;
};
} // namespace Tool
