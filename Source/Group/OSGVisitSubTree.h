#pragma once

#include "OSGVisitSubTreeBase.h"

namespace OSG
{
/// Shows another tree, which is walked in place of the children of the core's nodes. The core holds
/// a reference to the root of that tree. Traversals end cycles. From the commit after
/// setSubTreeRoot() on, an edit of the other tree also marks the volumes of the core's nodes as out
/// of date.
class OSG_GROUP_API VisitSubTree : public VisitSubTreeBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    /// Sets the box of the other tree.
    void adjustVolume(Volume &volume) override;
    void changed(BitVector whichField, UInt32 origin, BitVector details) override;
    Node *getOtherTree() const override { return getSubTreeRoot(); }

  protected:
    VisitSubTree() = default;
    VisitSubTree(VisitSubTree const &source)
        : VisitSubTreeBase(source)
    {
    }
    ~VisitSubTree() override;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;

  private:
    void watch(Node *root);

    Node *_watched = nullptr; // the root that has this as a viewer; it may be dead
};
} // namespace OSG
