#pragma once

#include "OSGConstantSizeTransformBase.h"
#include "OSGRenderedMatrix.h"

namespace OSG
{
/// Shows its subtree at the same size on the screen wherever the camera is: one unit of the subtree
/// is one pixel along the horizontal. Origin and directions are those of the space of the core; the
/// lengths of its axes do not count. Rendering computes the matrix that does so; until then it is
/// the identity.
class OSG_CONTRIBTECHNIQUES_API ConstantSizeTransform : public ConstantSizeTransformBase,
                                                        public RenderedMatrix
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    /// Multiplies `matrix` from the right by the matrix that rendering has computed last.
    void accumulateMatrix(Matrix &matrix) override;
    /// Makes the volume infinite, because the size of the subtree in space depends on the view.
    void adjustVolume(Volume &volume) override;

  protected:
    ConstantSizeTransform() = default;
    ConstantSizeTransform(ConstantSizeTransform const &) = default;
    ~ConstantSizeTransform() override;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;
};
} // namespace OSG
