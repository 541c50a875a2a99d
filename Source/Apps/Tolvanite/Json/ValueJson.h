#pragma once

#include "JsonWriter.h"
#include "OSGBoxVolume.h"
#include "OSGMatrix.h"

namespace OSG
{
class AttachmentContainer;
}

namespace Tool
{
/// Writes `{"min": [x,y,z], "max": [x,y,z]}`, or null for a box that is empty or has no end.
void write_bounds(JsonWriter &json, OSG::BoxVolume const &bounds);
/// Writes 16 numbers, column after column.
void write_matrix(JsonWriter &json, OSG::Matrix const &matrix);
/// Writes the name of `container`; null where it has none.
void write_name(JsonWriter &json, OSG::AttachmentContainer const *container);

/// Writes a member of three or four numbers.
template <class Tuple>
void write_tuple(JsonWriter &json, char const *name, Tuple const &tuple, std::size_t count)
{
    json.key(name).array(tuple, count);
}
} // namespace Tool
