#pragma once

/// \file
/// The keys of JSON objects, in their order.

#include <string>

#include <nlohmann/json.hpp>

namespace Tool::Test
{
using Json = nlohmann::ordered_json;

/// The keys with a blank between them.
inline std::string keys_of(Json const &object)
{
    std::string keys;
    for(auto const &[key, value] : object.items())
        keys += (keys.empty() ? "" : " ") + key;
    return keys;
}
} // namespace Tool::Test
