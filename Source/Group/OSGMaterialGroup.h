#pragma once

#include "OSGMaterialGroupBase.h"

namespace OSG
{
/// Replaces the materials of its subtree. Of nested groups the innermost with a material counts.
class OSG_GROUP_API MaterialGroup : public MaterialGroupBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

  protected:
    MaterialGroup() = default;
    MaterialGroup(MaterialGroup const &) = default;
    ~MaterialGroup() override;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;
};
} // namespace OSG
