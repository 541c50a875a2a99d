#pragma once

#include "OSGSwitchBase.h"

namespace OSG
{
/// Shows one child: `choice` is its index, or one of the values below. Traversals other than
/// rendering walk all children.
class OSG_GROUP_API Switch : public SwitchBase
{
  public:
    static constexpr Int32 NoChild = -1;
    static constexpr Int32 AllChildren = -2;

  protected:
    Switch() = default;
    Switch(Switch const &) = default;
    ~Switch() override;

    friend Pattern;
};
} // namespace OSG
