#pragma once

#include <unordered_set>
#include <vector>

#include "OSGMemManager.h"
#include "OSGUtilApi.h"

namespace OSG
{
class Node;

/// A list of nodes, each in it once, in the order in which they came; to ask whether a node is in
/// it takes the same time however long it is. Nodes are not counted: whoever puts them in keeps
/// them.
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

    /// Null and nodes that are in it already are passed over.
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
