#pragma once

#include <vector>

#include "OSGContribTolvaniteApi.h"
#include "OSGNode.h"
#include "OSGRefCountPtr.h"

namespace OSG
{
/// Edits of a node's children: noted while the children are looked at, made afterwards. Nodes are
/// counted as long as they are noted.
class OSG_CONTRIBTOLVANITE_API ChildEdits
{
  public:
    ChildEdits();
    ChildEdits(ChildEdits const &) = delete;
    ChildEdits &operator=(ChildEdits const &) = delete;
    ~ChildEdits();

    /// `node` becomes a child, behind those that are there; it leaves the parent that it has. Null
    /// is no node.
    void add(Node *node)
    {
        if(node != nullptr)
            _toAdd.emplace_back(node);
    }
    /// `child`, a child of the parent or of another node that goes, goes.
    void sub(Node *child) { _toSub.emplace_back(child); }
    /// All that is below `node` now becomes children, in order.
    void addChildrenOf(Node const *node);

    /// Makes the edits. The nodes are added first, while those that come from a child that goes are
    /// still below `parent`: then the search for a cycle is short.
    void applyTo(Node *parent) const;

  private:
    using List = std::vector<UnrecordedRefPtr<Node>, MemAllocator<UnrecordedRefPtr<Node>>>;

    List _toAdd;
    List _toSub;
};
} // namespace OSG
