#pragma once

/// \file
/// Chooses a file type by suffix, for images and scenes.

#include <algorithm>
#include <string>

#include "OSGIOFileType.h"

namespace OSG
{
/// Converts A to Z to lower case. The host's locale does not matter.
inline std::string lower_case(std::string text)
{
    for(char &c : text)
    {
        if(c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

/// The text after the last dot of the last path element, in lower case. Empty where there is no
/// dot.
inline std::string file_suffix(std::string const &fileName)
{
    std::size_t const element = fileName.find_last_of("/\\");
    std::size_t const dot = fileName.find_last_of('.');
    if(dot == std::string::npos || (element != std::string::npos && dot < element))
        return std::string();
    return lower_case(fileName.substr(dot + 1));
}

/// The type for `suffix`, whose case does not matter. Types that override are preferred to others,
/// then those of a higher override priority, then those registered earlier. Null where there is
/// none.
template <class Types>
auto find_file_type(Types const &types, std::string const &suffix) -> typename Types::value_type
{
    typename Types::value_type best = nullptr;
    auto const rank = [](IOFileTypeBase const *type)
    { return type->doOverride() ? UInt64(1) + type->getOverridePriority() : UInt64(0); };
    std::string const wanted = file_suffix("." + suffix);
    for(auto type : types)
    {
        auto const &suffixes = type->suffixList();
        bool const serves =
            std::any_of(suffixes.begin(), suffixes.end(),
                        [&wanted](std::string const &own) { return lower_case(own) == wanted; });
        if(serves && (best == nullptr || rank(type) > rank(best)))
            best = type;
    }
    return best;
}
} // namespace OSG
