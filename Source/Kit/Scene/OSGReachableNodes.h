#pragma once

#include <unordered_set>
#include <vector>

#include "OSGNodeWalker.h"

namespace OSG
{
/// Calls `look(node)` for `root`, for all nodes below it, and for the nodes of trees that cores
/// below it show elsewhere (NodeCore::getOtherTree). Each node is looked at once. `look` must not
/// edit the scene.
template <class Look>
void for_each_reachable_node(Node *root, Look const &look)
{
    struct Visitor
    {
        Look const &look;
        std::unordered_set<Node *> seen = {};
        std::vector<Node *> trees = {};

        bool enter(Node *node)
        {
            if(!seen.insert(node).second)
                return false;
            look(node);
            if(node->getCore() != nullptr && node->getCore()->getOtherTree() != nullptr)
                trees.push_back(node->getCore()->getOtherTree());
            return true;
        }
        void leave(Node *) {}
    };
    Visitor visitor{look};
    visitor.trees.push_back(root);
    while(!visitor.trees.empty())
    {
        Node *const tree = visitor.trees.back();
        visitor.trees.pop_back();
        walk_children(tree, visitor);
    }
}

/// The number of nodes that for_each_reachable_node looks at.
inline UInt64 count_reachable_nodes(Node *root)
{
    UInt64 count = 0;
    for_each_reachable_node(root, [&count](Node *) { ++count; });
    return count;
}
} // namespace OSG
