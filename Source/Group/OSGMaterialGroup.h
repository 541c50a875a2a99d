#pragma once

#include "OSGMaterialGroupBase.h"

namespace OSG
{
/// Gives a material to all geometry in its subtree.
class OSG_GROUP_API MaterialGroup : public MaterialGroupBase
{
  protected:
    MaterialGroup() = default;
    MaterialGroup(MaterialGroup const &) = default;
    ~MaterialGroup() override;

    friend Pattern;
};
} // namespace OSG
