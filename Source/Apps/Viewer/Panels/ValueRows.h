#pragma once

/// \file
/// Rows of a name and a value, which a button copies.

#include <string>

namespace Viewer
{
/// Whether the table is in view; then rows and end_values follow.
bool begin_values(char const *id);
void value_row(char const *name, std::string const &value);
void end_values();
} // namespace Viewer
