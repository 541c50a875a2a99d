#pragma once

#include "OSGSwitchBase.h"

namespace OSG
{
/// Shows one child. `choice` is the index of the child or one of the values below; any other value
/// shows none. Only rendering looks at the choice. Other traversals walk all children.
class OSG_GROUP_API Switch : public SwitchBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    static constexpr Int32 NoChild = -1;
    static constexpr Int32 AllChildren = -2;

  protected:
    Switch() = default;
    Switch(Switch const &) = default;
    ~Switch() override;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;
};
} // namespace OSG
