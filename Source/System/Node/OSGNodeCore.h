#pragma once

#include "OSGNodeCoreBase.h"
#include "OSGPointerBag.h"

namespace OSG
{
class Node;
class Volume;

/// What a node is: a group, a transform, a geometry. Several nodes may share a core. The core knows
/// its nodes but does not count them.
class OSG_SYSTEM_API NodeCore : public NodeCoreBase
{
  public:
    using ParentList = PointerBagOf<Node>;

    /// The nodes that show this core, in no particular order.
    ParentList const &getParents() const { return _parents; }

    /// Makes the box of the node's children the box of the node: geometry adds its own extent,
    /// transforms carry the box into the parent's space.
    virtual void adjustVolume(Volume &volume);
    /// Multiplies what the core does to its subtree's space into `matrix`, from the right.
    virtual void accumulateMatrix(Matrix &matrix);
    /// Root of another tree that is shown below the core's nodes besides their children; null for
    /// nearly all cores.
    virtual Node *getOtherTree() const { return nullptr; }
    /// Marks the volumes of all parents and of the nodes above them as out of date.
    void invalidateVolume() override;
    /// Enters the nodes that show the core into the journal of edits. Cores that replace this hand
    /// on to it.
    void changed(BitVector whichField, UInt32 origin, BitVector details) override;
    /// Makes this the core of a node.
    bool linkParent(FieldContainer *parent, UInt16 fieldId) override;

  protected:
    NodeCore() = default;
    /// A copy belongs to no node.
    NodeCore(NodeCore const &source)
        : NodeCoreBase(source)
    {
    }
    ~NodeCore() override;

    friend Pattern;

  private:
    friend class Node;

    ParentList _parents;
};
} // namespace OSG
