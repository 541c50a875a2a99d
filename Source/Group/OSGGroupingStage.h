#pragma once

#include "OSGGroupingStageBase.h"

namespace OSG
{
/// A stage that renders its subtree apart from the rest.
class OSG_GROUP_API GroupingStage : public GroupingStageBase
{
  protected:
    GroupingStage() = default;
    GroupingStage(GroupingStage const &) = default;
    ~GroupingStage() override;

    friend Pattern;
};
} // namespace OSG
