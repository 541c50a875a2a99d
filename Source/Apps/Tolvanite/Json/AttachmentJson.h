#pragma once

#include "JsonWriter.h"

namespace OSG
{
class AttachmentContainer;
}

namespace Tool
{
/// Writes the member "attachments" with what hangs on a node and its core, names aside; nothing
/// where nothing does. Either may be null.
///
/// An attachment's fields are found by reflection: the system's own bookkeeping is left out, values
/// of several numbers are arrays, a material is shown as such, and another container that a field
/// points to by its type and name.
void write_attachments(JsonWriter &json, OSG::AttachmentContainer const *node,
                       OSG::AttachmentContainer const *core);
} // namespace Tool
