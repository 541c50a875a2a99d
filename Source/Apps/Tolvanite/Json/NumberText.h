#pragma once

/// \file
/// Numbers in tables.

#include <string>

namespace Tool
{
/// The shortest text that reads back as the number.
std::string number_text(float number);

/// Three numbers with blanks between them.
template <class Tuple>
std::string spaced(Tuple const &values)
{
    return number_text(values[0]) + ' ' + number_text(values[1]) + ' ' + number_text(values[2]);
}
} // namespace Tool
