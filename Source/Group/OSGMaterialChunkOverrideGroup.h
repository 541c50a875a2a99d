#pragma once

#include "OSGMaterialChunkOverrideGroupBase.h"

namespace OSG
{
/// Overrides the materials of its subtree part by part: what its material says counts, the rest of
/// theirs remains. Of nested groups the outermost with a material counts.
class OSG_GROUP_API MaterialChunkOverrideGroup : public MaterialChunkOverrideGroupBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

  protected:
    MaterialChunkOverrideGroup() = default;
    MaterialChunkOverrideGroup(MaterialChunkOverrideGroup const &) = default;
    ~MaterialChunkOverrideGroup() override;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;
};
} // namespace OSG
