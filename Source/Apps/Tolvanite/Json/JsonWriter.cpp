#include "JsonWriter.h"

#include <algorithm>
#include <cmath>
#include <string>

#include <nlohmann/json.hpp>

namespace Tool
{
namespace
{
template <class T>
std::string shortest(T number)
{
    if(std::isnan(number))
        return "\"nan\"";
    if(std::isinf(number))
        return number > 0 ? "\"inf\"" : "\"-inf\"";
    char digits[32];
    auto const end = std::to_chars(digits, digits + sizeof(digits), number).ptr;
    return {digits, end};
}

// Whether a text stands in JSON as it is, as nearly all keys and paths do.
bool is_plain(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return c >= ' ' && c < 0x7F && c != '"' && c != '\\'; });
}
} // namespace

JsonWriter &JsonWriter::key(std::string_view name)
{
    separate();
    if(is_plain(name))
        _out << '"' << name << "\":";
    else
        _out << nlohmann::json(name) << ':';
    _afterKey = true;
    return *this;
}

JsonWriter &JsonWriter::value(float number) { return raw(shortest(number)); }

JsonWriter &JsonWriter::value(double number) { return raw(shortest(number)); }

JsonWriter &JsonWriter::value(bool truth) { return raw(truth ? "true" : "false"); }

JsonWriter &JsonWriter::value(std::string_view text)
{
    if(is_plain(text))
    {
        separate();
        _out << '"' << text << '"';
        return *this;
    }
    using Json = nlohmann::json;
    return raw(Json(text).dump(-1, ' ', false, Json::error_handler_t::replace));
}

JsonWriter &JsonWriter::open(char bracket)
{
    separate();
    _out << bracket;
    _hasElements.push_back(false);
    return *this;
}

JsonWriter &JsonWriter::close(char bracket)
{
    _hasElements.pop_back();
    _out << bracket;
    return *this;
}

JsonWriter &JsonWriter::raw(std::string_view text)
{
    separate();
    _out << text;
    return *this;
}

void JsonWriter::separate()
{
    if(_afterKey)
        _afterKey = false;
    else if(!_hasElements.empty())
    {
        if(_hasElements.back())
            _out << ',';
        _hasElements.back() = true;
    }
}
} // namespace Tool
