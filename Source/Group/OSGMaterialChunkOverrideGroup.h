#pragma once

#include "OSGMaterialChunkOverrideGroupBase.h"

namespace OSG
{
/// Overrides the materials in its subtree chunk by chunk.
class OSG_GROUP_API MaterialChunkOverrideGroup : public MaterialChunkOverrideGroupBase
{
  protected:
    MaterialChunkOverrideGroup() = default;
    MaterialChunkOverrideGroup(MaterialChunkOverrideGroup const &) = default;
    ~MaterialChunkOverrideGroup() override;

    friend Pattern;
};
} // namespace OSG
