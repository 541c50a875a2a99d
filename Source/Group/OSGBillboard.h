#pragma once

#include "OSGBillboardBase.h"
#include "OSGRenderedMatrix.h"

namespace OSG
{
/// Turns its subtree towards the viewer. Its matrix is known only while the scene is rendered.
class OSG_GROUP_API Billboard : public BillboardBase, public RenderedMatrix
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    /// Multiplies `matrix` by the matrix of the last rendering.
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
