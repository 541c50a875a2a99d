#pragma once

#include <algorithm>
#include <string>

namespace Viewer
{
/// The text with a to z for A to Z, for comparisons. Other bytes stay.
inline std::string folded(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char letter)
                   { return letter >= 'A' && letter <= 'Z' ? char(letter - 'A' + 'a') : letter; });
    return text;
}
} // namespace Viewer
