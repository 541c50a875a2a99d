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
/// Writes the tree of `root` as an object of nested nodes. It is written during the walk, so a
/// scene of any depth needs no stack and no text in memory. A subtree that is visited below itself
/// is null there, with a warning in the log.
void write_tree(JsonWriter &json, OSG::Node *root, Arrays arrays);

/// Prints the tree of `root` for people, a line per node. The indentation stops growing at 40
/// levels.
void print_tree(std::ostream &out, OSG::Node *root);
} // namespace Tool
