#pragma once

#include <span>
#include <string>
#include <vector>

namespace Tool
{
/// Three finite numbers in the form `x,y,z` without blanks.
struct Triple
{
    float x = 0;
    float y = 0;
    float z = 0;
};

/// Two integers with a separator between them: `1280x720`, `640,330`.
struct Pair
{
    int first = 0;
    int second = 0;
};

/// Each function reads the whole text. For any other text it returns false and does not change the
/// result.
bool parse_triple(std::string const &text, Triple &result);
bool parse_pair(std::string const &text, char separator, Pair &result);
/// Reads as many finite numbers, separated by commas, as `numbers` has elements.
bool parse_numbers(std::string const &text, std::span<float> numbers);
/// Reads finite numbers, separated by commas, until the text ends.
bool parse_number_list(std::string const &text, std::vector<float> &numbers);
} // namespace Tool
