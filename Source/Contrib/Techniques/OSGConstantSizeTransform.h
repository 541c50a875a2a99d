#pragma once

#include "OSGConstantSizeTransformBase.h"
#include "OSGRenderedMatrix.h"

namespace OSG
{
/// Keeps the size of its subtree on the screen; the scale is known when it is rendered.
class OSG_CONTRIBTECHNIQUES_API ConstantSizeTransform : public ConstantSizeTransformBase,
                                                        public RenderedMatrix
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    /// Multiplies the matrix that rendering keeps.
    void accumulateMatrix(Matrix &matrix) override;
    void adjustVolume(Volume &volume) override;

  protected:
    ConstantSizeTransform() = default;
    ConstantSizeTransform(ConstantSizeTransform const &) = default;
    ~ConstantSizeTransform() override;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;
};
} // namespace OSG
