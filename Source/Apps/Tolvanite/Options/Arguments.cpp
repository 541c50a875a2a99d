#include "Arguments.h"

#include <charconv>
#include <cmath>

namespace Tool
{
namespace
{
// Takes a number, then `separator` (the end of the text where it is 0); moves `at` behind both.
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

bool parseTriple(std::string const &text, Triple &result)
{
    char const *at = text.data();
    char const *const end = at + text.size();
    Triple read;
    if(!take(at, end, ',', read.x) || !take(at, end, ',', read.y) || !take(at, end, 0, read.z))
        return false;
    if(!std::isfinite(read.x) || !std::isfinite(read.y) || !std::isfinite(read.z))
        return false;
    result = read;
    return true;
}

bool parsePair(std::string const &text, char separator, Pair &result)
{
    char const *at = text.data();
    char const *const end = at + text.size();
    Pair read;
    if(!take(at, end, separator, read.first) || !take(at, end, 0, read.second))
        return false;
    result = read;
    return true;
}

bool parseRectangle(std::string const &text, Pair &from, Pair &to)
{
    char const *at = text.data();
    char const *const end = at + text.size();
    Pair begin;
    Pair last;
    if(!take(at, end, ',', begin.first) || !take(at, end, ',', begin.second) ||
       !take(at, end, ',', last.first) || !take(at, end, 0, last.second))
        return false;
    from = begin;
    to = last;
    return true;
}
} // namespace Tool
