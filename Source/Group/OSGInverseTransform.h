#pragma once

#include "OSGInverseTransformBase.h"
#include "OSGRenderedMatrix.h"

namespace OSG
{
/// Undoes the transforms above it. What it undoes is known when it is rendered.
class OSG_GROUP_API InverseTransform : public InverseTransformBase, public RenderedMatrix
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    /// Multiplies the matrix that rendering keeps.
    void accumulateMatrix(Matrix &matrix) override;
    void adjustVolume(Volume &volume) override;

  protected:
    InverseTransform() = default;
    InverseTransform(InverseTransform const &) = default;
    ~InverseTransform() override;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;
};
} // namespace OSG
