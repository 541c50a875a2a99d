#pragma once

#include "OSGScreenLODBase.h"

namespace OSG
{
/// Shows one of the children by the share of the picture that the rectangle around the node's
/// volume covers, clipped to the picture: child i, where i entries of `coverage` are above the
/// share, at most the last child. A volume that reaches before the near plane counts as covering
/// everything. Only rendering looks at the share. Other traversals walk all children.
class OSG_GROUP_API ScreenLOD : public ScreenLODBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

  protected:
    ScreenLOD() = default;
    ScreenLOD(ScreenLOD const &) = default;
    ~ScreenLOD() override;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;
};
} // namespace OSG
