#pragma once

#include "JsonWriter.h"

namespace OSG
{
class Geometry;
}

namespace Tool
{
enum class Arrays
{
    Counted, ///< vertex arrays and indices as their sizes
    Written  ///< with their values
};

/// Writes the members of a geometry into the open object.
void write_geometry(JsonWriter &json, OSG::Geometry const &geometry, Arrays arrays);
} // namespace Tool
