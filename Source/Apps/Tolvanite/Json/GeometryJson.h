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
    Counted, ///< only the sizes of vertex arrays and indices
    Written  ///< also their values
};

/// Writes the members for a geometry into the open object.
void write_geometry(JsonWriter &json, OSG::Geometry const &geometry, Arrays arrays);
} // namespace Tool
