#pragma once

#include "OSGTransformBase.h"

namespace OSG
{
/// Moves its subtree by a matrix, column vectors from the right: parent = matrix * child.
class OSG_GROUP_API Transform : public TransformBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    /// Multiplies the matrix from the right.
    void accumulateMatrix(Matrix &matrix) override;
    /// Carries the box of the children into the parent's space.
    void adjustVolume(Volume &volume) override;
    void changed(BitVector whichField, UInt32 origin, BitVector details) override;

  protected:
    Transform() = default;
    Transform(Transform const &) = default;
    ~Transform() override;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;
};
} // namespace OSG
