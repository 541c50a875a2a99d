#pragma once

#include <unordered_set>
#include <vector>

#include "OSGMemManager.h"
#include "OSGUtilApi.h"

namespace OSG
{
class Node;

/// A list of distinct nodes in the order in which they were added. contains() takes constant time.
/// Nodes are not counted: the caller keeps them alive.
class OSG_UTIL_API NodeSet
{
  public:
    using List = std::vector<Node *, MemAllocator<Node *>>;

    NodeSet();
    NodeSet(NodeSet const &);
    NodeSet(NodeSet &&) noexcept;
    NodeSet &operator=(NodeSet const &);
    NodeSet &operator=(NodeSet &&) noexcept;
    ~NodeSet();

    /// Adds a node. Null and nodes that are in the list already are ignored.
    void add(Node *node);
    void clear();
    void swap(NodeSet &other) noexcept;

    bool contains(Node const *node) const
    {
        return !_list.empty() && _known.find(node) != _known.end();
    }
    bool empty() const { return _list.empty(); }
    List const &getList() const { return _list; }

  private:
    using Known = std::unordered_set<Node const *, std::hash<Node const *>, std::equal_to<>,
                                     MemAllocator<Node const *>>;

    List _list;
    Known _known;
};
} // namespace OSG
