#pragma once

#include "OSGGroupBase.h"

namespace OSG
{
/// Groups the children of its nodes. The default matrix and volume behaviour of a core is all it
/// needs.
class OSG_GROUP_API Group : public GroupBase
{
  protected:
    Group() = default;
    Group(Group const &) = default;
    ~Group() override;

    friend Pattern;
};
} // namespace OSG
