#pragma once

#include "OSGVisitSubTreeBase.h"

namespace OSG
{
/// Stands for another subtree, walked in place of the children of its nodes. The other tree is
/// counted; cycles are ended by the traversals. It does not learn of edits inside the other tree:
/// after one that moves its bounds the host calls invalidateVolume() here as well.
class OSG_GROUP_API VisitSubTree : public VisitSubTreeBase
{
  public:
    /// The box of the other subtree in place of the children's.
    void adjustVolume(Volume &volume) override;
    void changed(BitVector whichField, UInt32 origin, BitVector details) override;
    Node *getOtherTree() const override { return getSubTreeRoot(); }

  protected:
    VisitSubTree() = default;
    VisitSubTree(VisitSubTree const &) = default;
    ~VisitSubTree() override;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;
};
} // namespace OSG
