#pragma once

#include "JsonWriter.h"
#include "Selector.h"

namespace Tool
{
/// Writes the members "hits", "count" and "seconds" of a selection in the scene of `root`.
void write_hits(JsonWriter &json, Selection const &selection, OSG::Node const *root);
} // namespace Tool
