#pragma once

#include "OSGMultiSwitchBase.h"

namespace OSG
{
/// Shows the children that its choices name. The host keeps the choices in ascending order.
class OSG_GROUP_API MultiSwitch : public MultiSwitchBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    // --- values of the mode; any other value shows all children ---
    static constexpr Int32 ShowChoices = -1;
    static constexpr Int32 ShowNone = -2;
    static constexpr Int32 ShowAll = -3;

  protected:
    MultiSwitch() = default;
    MultiSwitch(MultiSwitch const &) = default;
    ~MultiSwitch() override;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;
};
} // namespace OSG
