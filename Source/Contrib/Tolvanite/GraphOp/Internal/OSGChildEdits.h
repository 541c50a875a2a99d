#pragma once

#include <vector>

#include "OSGContribTolvaniteApi.h"
#include "OSGNode.h"
#include "OSGRefCountPtr.h"

namespace OSG
{
/// Collects edits of a node's children while the children are looked at, and makes them afterwards.
/// It holds a reference to each node.
class OSG_CONTRIBTOLVANITE_API ChildEdits
{
  public:
    ChildEdits();
    ChildEdits(ChildEdits const &) = delete;
    ChildEdits &operator=(ChildEdits const &) = delete;
    ~ChildEdits();

    /// `node` will become the last child and leave its former parent. Null is ignored.
    void add(Node *node)
    {
        if(node != nullptr)
            _toAdd.emplace_back(node);
    }
    /// `child` will be removed. It is a child of the parent, or of a node that is removed as well.
    void sub(Node *child) { _toSub.emplace_back(child); }
    /// The present children of `node` will become children of the parent, in order.
    void addChildrenOf(Node const *node);

    /// Makes the edits. Nodes are added before others are removed, because a node that is still
    /// below `parent` needs only a short search for cycles.
    void applyTo(Node *parent) const;

  private:
    using List = std::vector<UnrecordedRefPtr<Node>, MemAllocator<UnrecordedRefPtr<Node>>>;

    List _toAdd;
    List _toSub;
};
} // namespace OSG
