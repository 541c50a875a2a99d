#pragma once

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

/// Two whole numbers with a sign between them: `1280x720`, `640,330`.
struct Pair
{
    int first = 0;
    int second = 0;
};

/// Read the whole text or nothing: false, and `result` as it was, for any other text.
bool parseTriple(std::string const &text, Triple &result);
bool parsePair(std::string const &text, char separator, Pair &result);
/// Four numbers separated by commas, as two corners of a rectangle.
bool parseRectangle(std::string const &text, Pair &from, Pair &to);
} // namespace Tool
