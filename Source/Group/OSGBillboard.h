#pragma once

#include "OSGBillboardBase.h"
#include "OSGRenderedMatrix.h"

namespace OSG
{
/// Turns its subtree towards the viewer, whom rendering knows.
class OSG_GROUP_API Billboard : public BillboardBase, public RenderedMatrix
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    /// Multiplies the matrix that rendering keeps.
    void accumulateMatrix(Matrix &matrix) override;
    void adjustVolume(Volume &volume) override;

  protected:
    Billboard() = default;
    Billboard(Billboard const &) = default;
    ~Billboard() override;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;
};
} // namespace OSG
