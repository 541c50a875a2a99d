#pragma once

#include <fstream>
#include <iterator>
#include <string>

namespace OSG::Test
{
/// All bytes of a file; empty where it cannot be read.
inline std::string content_of(std::string const &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
} // namespace OSG::Test
