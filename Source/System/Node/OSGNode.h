#pragma once

#include "OSGNodeBase.h"

namespace OSG
{
/// An element of the scene's tree. A node owns its children and shares its core. It has at most one
/// parent, which it does not count.
class OSG_SYSTEM_API Node : public NodeBase
{
  public:
    static constexpr Replaced Replaces = Replaced::OnCreate | Replaced::ExecSync;

    // --- core ---
    /// Null for a node without a core; it groups its children then.
    NodeCore *getCore() const { return NodeBase::getCore(); }
    /// The new core is referenced before the old one is released. Null takes the core away.
    void setCore(NodeCore *core);

    // --- tree ---
    Node *getParent() const { return _parent; }
    UInt32 getNChildren() const { return _mfChildren.size(); }
    /// `index` is below getNChildren().
    Node *getChild(UInt32 index) const { return _mfChildren[index]; }
    /// Appends `child`, which leaves the parent that it has. Null, the node itself and its own
    /// ancestors are refused with a warning: the tree stays a tree.
    void addChild(Node *child);
    /// Takes the child out; later children move up by one. The child loses a reference.
    /// An index beyond the children or a node that is no child here does nothing.
    void subChild(UInt32 index);
    void subChild(Node *child);
    /// Asks the processor to have the node at hand soon; for walks over scenes larger than caches.
    void prefetch() const
    {
        __builtin_prefetch(this);
        __builtin_prefetch(&_mfChildren);
    }
    /// Place among the children; -1 for a node that is no child here.
    Int32 findChild(Node const *child) const;

    // --- bounding volume ---
    /// Box of the subtree in the parent's coordinates. It may be out of date, see updateVolume().
    BoxVolume const &getVolume() const { return _sfVolume.getValue(); }
    /// For hosts that set a box of their own; it stays until the next invalidateVolume(). What is
    /// returned may be written to until the next commit.
    BoxVolume &editVolume();
    /// Brings the boxes of the subtree up to date where they are not.
    void updateVolume();
    /// Marks this box and those of all ancestors as out of date.
    ///
    /// Trees that are shown elsewhere tell those who show them (addViewer), whose boxes, and those
    /// above them, are then out of date as well.
    void invalidateVolume() override;
    /// From now on the nodes of `viewer`, a core that shows the tree of `shown`, learn of what
    /// makes that node's box out of date. Neither counts the other: a node forgets its viewers when
    /// it ends, a viewer takes itself away before it does, whether the node is still there or not.
    static void addViewer(Node *shown, NodeCore *viewer);
    static void subViewer(Node const *shown, NodeCore *viewer);
    /// The node's box in world space; updated first.
    void getWorldVolume(BoxVolume &world);

    /// Product of the matrices of all cores from the root down to this node.
    Matrix getToWorld() const;

    /// The first node of that name in the subtree, or a core of one; null where there is none.
    FieldContainer *findNamedComponent(char const *name) override;
    bool unlinkChild(FieldContainer *child, UInt16 fieldId) override;
    /// Enters the node into the journal of edits where its links or its mask were edited.
    void changed(BitVector whichField, UInt32 origin, BitVector details) override;
    /// Appends this node to the children of a node.
    bool linkParent(FieldContainer *parent, UInt16 fieldId) override;
    void resolveLinks() override;
    void copyFromBin(ExceptionBinaryDataHandler &handler, BitVector mask) override;
    void execSync(NodeBase *from, BitVector whichField, AspectOffsets &offsets, BitVector syncMode,
                  UInt32 syncInfo);

  protected:
    Node();
    Node(Node const &source)
        : NodeBase(source)
    {
    }
    ~Node() override;

    void onCreate(Node const *source);

    friend Pattern;

  private:
    void linkCore(NodeCore *core);
    void leaveCore();
    void takeOut(UInt32 index);
    struct Invalidation;
    class VolumeUpdate;
    void setUpdatedVolume(BoxVolume const &volume);
    void invalidateUpwards(Invalidation &work);
    void forgetViewers();
    void orphanChildren();
    void syncChildren(Node const &source);
    bool isBelow(Node const *other) const;

    Node *_parent = nullptr;
};
} // namespace OSG
