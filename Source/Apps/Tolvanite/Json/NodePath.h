#pragma once

#include <string>
#include <vector>

namespace OSG
{
class Node;
}

namespace Tool
{
/// The address of a node: child indices from the root. `/` is the root, `/0/3` is the fourth child
/// of the first child. For a node in a visited tree, the address of each visiting node and an `@`
/// come first: `/0/3@/1`.
///
/// `visiting` are the visiting nodes, outermost first. `node` is in the tree that the last of them
/// visits, or in the tree of `root` if there are none.
std::string node_path(OSG::Node const *root, std::vector<OSG::Node *> const &visiting,
                      OSG::Node const *node);
/// The addresses of the visiting nodes themselves.
std::vector<std::string> visiting_paths(OSG::Node const *root,
                                        std::vector<OSG::Node *> const &visiting);
} // namespace Tool
