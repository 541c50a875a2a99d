#include "OSGGraphOpParamSet.h"

#include <optional>
#include <string_view>

namespace OSG
{
namespace
{
constexpr std::string_view Separators(" \t\r\n\v\f,");

std::optional<bool> truth_of(std::string_view value)
{
    if(value == "true" || value == "1")
        return true;
    if(value == "false" || value == "0")
        return false;
    return std::nullopt;
}

// The value that `word` gives to `key`. Nothing where it names another key or has no valid value.
std::optional<bool> value_for(std::string_view key, std::string_view word)
{
    if(word.substr(0, key.size()) != key)
        return std::nullopt;
    std::string_view const rest = word.substr(key.size());
    if(rest.empty())
        return true;
    return rest[0] == '=' ? truth_of(rest.substr(1)) : std::nullopt;
}
} // namespace

GraphOpParamSet::~GraphOpParamSet() = default;

GraphOpParamSet::GraphOpParamSet(std::string const &params)
{
    std::size_t begin = params.find_first_not_of(Separators);
    while(begin != std::string::npos)
    {
        std::size_t const end = params.find_first_of(Separators, begin);
        _words.push_back({params.substr(begin, end - begin), false});
        begin = params.find_first_not_of(Separators, end);
    }
}

bool GraphOpParamSet::operator()(char const *key, bool &value)
{
    if(key == nullptr)
        return false;
    bool occurs = false;
    for(Word &word : _words)
    {
        std::optional<bool> const given = value_for(key, word.text);
        if(!given)
            continue;
        value = *given;
        word.used = true;
        occurs = true;
    }
    return occurs;
}

std::string GraphOpParamSet::getUnusedParams() const
{
    std::string unused;
    for(Word const &word : _words)
    {
        if(word.used)
            continue;
        if(!unused.empty())
            unused += ' ';
        unused += word.text;
    }
    return unused;
}
} // namespace OSG
