#pragma once

#include "JsonWriter.h"

namespace OSG
{
class AttachmentContainer;
}

namespace Tool
{
/// Writes the member "attachments" with the attachments of a node and its core, without names.
/// Writes nothing if there are none. Either pointer may be null.
///
/// The fields of an attachment are found by reflection. Fields that serve the system itself are
/// left out. A value of several numbers becomes an array, and a material becomes an object. For any
/// other container that a field points to, type and name are written.
void write_attachments(JsonWriter &json, OSG::AttachmentContainer const *node,
                       OSG::AttachmentContainer const *core);
} // namespace Tool
