#pragma once

/// \file
/// Rows of a name and a value, which a click copies.

#include <string>

#include "OSGVector.h"

namespace Viewer
{
/// With six digits.
std::string text_of_number(double number);
std::string text_of_tuple(OSG::Pnt3f const &point);
std::string text_of_tuple(OSG::Vec3f const &vector);

/// Whether the table is in view; then rows and end_values follow.
bool begin_values(char const *id);
void value_row(char const *name, std::string const &value);
void end_values();
} // namespace Viewer
