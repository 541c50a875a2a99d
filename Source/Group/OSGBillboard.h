#pragma once

#include "OSGRenderedMatrix.h"
#include "OSGBillboardBase.h"

namespace OSG
{
/// Turns its subtree towards the viewer, whom rendering knows.
class OSG_GROUP_API Billboard : public BillboardBase, public RenderedMatrix
{
  public:
    /// Multiplies the matrix that rendering keeps.
    void accumulateMatrix(Matrix &matrix) override;
    void adjustVolume(Volume &volume) override;

  protected:
    Billboard() = default;
    Billboard(Billboard const &) = default;
    ~Billboard() override;

    friend Pattern;
};
} // namespace OSG
