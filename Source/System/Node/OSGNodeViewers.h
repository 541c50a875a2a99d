#pragma once

/// \file
/// Who shows the tree of a node elsewhere. Few nodes are shown so: what they need is kept here.

#include <mutex>
#include <unordered_map>

#include "OSGMemManager.h"
#include "OSGPointerBag.h"

namespace OSG
{
class Node;
class NodeCore;

/// Cores by the node whose tree they show. Guarded by a lock of its own; counts nothing.
class NodeViewers
{
  public:
    struct Entry
    {
        PointerBagOf<NodeCore> viewers;
        Entry *nextPending = nullptr; ///< of an invalidation that is under way
    };

    /// Made on first use, never destroyed.
    static NodeViewers &the();

    std::mutex &guard() { return _guard; }

    // --- under the guard ---
    /// The node's entry, made where there is none.
    Entry &entryOf(Node const *node) { return _entries[node]; }
    /// Null where the node has no entry.
    Entry *findEntry(Node const *node);
    void forget(Node const *node) { _entries.erase(node); }

  private:
    NodeViewers() = default;

    std::mutex _guard;
    std::unordered_map<Node const *, Entry, std::hash<Node const *>, std::equal_to<>,
                       MemAllocator<std::pair<Node const *const, Entry>>>
        _entries;
};
} // namespace OSG
