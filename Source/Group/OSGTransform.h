#pragma once

#include "OSGTransformBase.h"

namespace OSG
{
/// Transforms its subtree by a matrix. Points are column vectors: point in the parent's space =
/// matrix * point in the children's space.
class OSG_GROUP_API Transform : public TransformBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    /// Multiplies `matrix` by the core's matrix from the right.
    void accumulateMatrix(Matrix &matrix) override;
    /// Transforms the box of the children into the parent's space.
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
