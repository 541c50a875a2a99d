#pragma once

#include <string>
#include <vector>

namespace OSG
{
class Node;
}

namespace Tool
{
/// The address of a node by child indices from the root: `/` is the root, `/0/3` the fourth child
/// of the first child. A node below visited subtrees has the address of each visiting node with an
/// `@` before its own: `/0/3@/1`.
///
/// `visiting` holds the nodes that visit, outermost first; `node` lies in the tree that the last of
/// them visits, or in that of `root` where there is none.
std::string node_path(OSG::Node const *root, std::vector<OSG::Node *> const &visiting,
                      OSG::Node const *node);
/// The addresses of the visiting nodes themselves.
std::vector<std::string> visiting_paths(OSG::Node const *root,
                                        std::vector<OSG::Node *> const &visiting);
} // namespace Tool
