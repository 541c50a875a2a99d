#pragma once

#include <span>
#include <string>

namespace Tool
{
/// Three finite numbers as people write them: `x,y,z` without blanks.
struct Triple
{
    float x = 0;
    float y = 0;
    float z = 0;
};

/// Two whole numbers with a separator between them: `1280x720`, `640,330`.
struct Pair
{
    int first = 0;
    int second = 0;
};

/// Each reads the whole text or nothing: false, and the result as it was, for any other text.
bool parse_triple(std::string const &text, Triple &result);
bool parse_pair(std::string const &text, char separator, Pair &result);
/// As many finite numbers, separated by commas, as `numbers` has elements.
bool parse_numbers(std::string const &text, std::span<float> numbers);
} // namespace Tool
