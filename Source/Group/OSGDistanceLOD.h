#pragma once

#include "OSGDistanceLODBase.h"

namespace OSG
{
/// Shows one of the children by the distance of the eye from `center`, both in world space: child
/// i, where i entries of `range` are not above the distance, at most the last child. Only rendering
/// looks at the distance. Other traversals walk all children.
class OSG_GROUP_API DistanceLOD : public DistanceLODBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

  protected:
    DistanceLOD() = default;
    DistanceLOD(DistanceLOD const &) = default;
    ~DistanceLOD() override;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;
};
} // namespace OSG
