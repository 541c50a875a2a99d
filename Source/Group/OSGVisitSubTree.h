#pragma once

#include "OSGVisitSubTreeBase.h"

namespace OSG
{
/// Stands for another subtree, walked in place of the children of its nodes. The other tree is
/// counted; cycles are ended by the traversals. Once the commit after setSubTreeRoot() has been
/// made, edits of the other tree make the boxes of the nodes here out of date as well.
class OSG_GROUP_API VisitSubTree : public VisitSubTreeBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    /// The box of the other subtree in place of the children's.
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

    Node *_watched = nullptr; // the root that has this among its viewers; it may have ended
};
} // namespace OSG
