#include "Arguments.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace Tool
{
namespace
{
// Reads a number and then `separator`, and moves `at` behind both. A separator of 0 stands for the
// end of the text.
template <class T>
bool take(char const *&at, char const *end, char separator, T &number)
{
    auto const [rest, error] = std::from_chars(at, end, number);
    if(error != std::errc())
        return false;
    at = rest;
    if(separator == 0)
        return at == end;
    return at != end && *at++ == separator;
}
} // namespace

bool parse_numbers(std::string const &text, std::span<float> numbers)
{
    char const *at = text.data();
    char const *const end = at + text.size();
    std::vector<float> read(numbers.size());
    for(std::size_t i = 0; i < read.size(); ++i)
    {
        bool const isLast = i + 1 == read.size();
        if(!take(at, end, isLast ? '\0' : ',', read[i]) || !std::isfinite(read[i]))
            return false;
    }
    std::copy(read.begin(), read.end(), numbers.begin());
    return true;
}

bool parse_number_list(std::string const &text, std::vector<float> &numbers)
{
    auto const commas = std::count(text.begin(), text.end(), ',');
    std::vector<float> read(static_cast<std::size_t>(commas) + 1);
    if(!parse_numbers(text, read))
        return false;
    numbers.swap(read);
    return true;
}

bool parse_triple(std::string const &text, Triple &result)
{
    float numbers[3];
    if(!parse_numbers(text, numbers))
        return false;
    result = {numbers[0], numbers[1], numbers[2]};
    return true;
}

bool parse_pair(std::string const &text, char separator, Pair &result)
{
    char const *at = text.data();
    char const *const end = at + text.size();
    Pair read;
    if(!take(at, end, separator, read.first) || !take(at, end, 0, read.second))
        return false;
    result = read;
    return true;
}
} // namespace Tool
