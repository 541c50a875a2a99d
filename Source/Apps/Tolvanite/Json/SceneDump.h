#pragma once

#include <ostream>

#include "GeometryJson.h"
#include "JsonWriter.h"

namespace OSG
{
class Node;
}

namespace Tool
{
/// Writes the tree below `root` as an object of nested nodes. It is written as it is walked, so
/// that a scene of any depth takes no stack and no text in memory. A subtree that would be visited
/// below itself is null there, with a warning in the log.
void write_tree(JsonWriter &json, OSG::Node *root, Arrays arrays);

/// Prints the tree below `root` for people, a line per node. Lines of nodes deeper than 40 levels
/// are indented no further.
void print_tree(std::ostream &out, OSG::Node *root);
} // namespace Tool
