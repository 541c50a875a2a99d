#include "OSGWalkScript.h"

#include <algorithm>
#include <charconv>

#include "OSGWalkKeys.h"

namespace OSG
{
namespace
{
struct KeyName
{
    std::string_view name;
    Int16 code;
};

constexpr KeyName KeyNames[] = {{"W", 'W'},
                                {"A", 'A'},
                                {"S", 'S'},
                                {"D", 'D'},
                                {"Q", 'Q'},
                                {"E", 'E'},
                                {"X", 'X'},
                                {"Y", 'Y'},
                                {"C", 'C'},
                                {"Shift", WalkKeys::Shift},
                                {"Ctrl", WalkKeys::Ctrl},
                                {"Space", WalkKeys::Space}};
constexpr std::string_view NoKeys = "none";
constexpr std::string_view Blanks = " \t";

/// Takes the next word off the text.
std::string_view take_word(std::string_view &text)
{
    text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
    std::string_view const word = text.substr(0, text.find_first_of(Blanks));
    text.remove_prefix(word.size());
    return word;
}

bool add_key(std::string_view name, std::vector<Int16> &keys)
{
    auto const *const found = std::find_if(std::begin(KeyNames), std::end(KeyNames),
                                           [name](KeyName const &key) { return key.name == name; });
    if(found == std::end(KeyNames))
        return false;
    keys.push_back(found->code);
    return true;
}

bool parse_keys(std::string_view text, std::vector<Int16> &keys)
{
    if(text == NoKeys)
        return true;
    for(;;)
    {
        std::size_t const end = text.find('+');
        if(!add_key(text.substr(0, end), keys))
            return false;
        if(end == std::string_view::npos)
            return true;
        text.remove_prefix(end + 1);
    }
}
} // namespace

bool WalkScriptLine::holds(Int16 key) const
{
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

bool is_walk_comment(std::string_view text)
{
    return text.starts_with('#') || text.find_first_not_of(Blanks) == std::string_view::npos;
}

std::optional<WalkScriptLine> parse_walk_line(std::string_view text)
{
    std::string_view const keys = take_word(text);
    std::string_view const time = take_word(text);
    if(!take_word(text).empty())
        return std::nullopt;
    WalkScriptLine line;
    char const *const end = time.data() + time.size();
    auto const [rest, error] = std::from_chars(time.data(), end, line.milliseconds);
    if(error != std::errc() || rest != end || !parse_keys(keys, line.keys))
        return std::nullopt;
    return line;
}
} // namespace OSG
