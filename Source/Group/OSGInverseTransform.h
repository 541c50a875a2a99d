#pragma once

#include "OSGInverseTransformBase.h"
#include "OSGRenderedMatrix.h"

namespace OSG
{
/// Undoes the transforms above it. Its matrix is known only while the scene is rendered.
class OSG_GROUP_API InverseTransform : public InverseTransformBase, public RenderedMatrix
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    /// Multiplies `matrix` by the matrix of the last rendering.
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
