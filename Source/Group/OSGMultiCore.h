#pragma once

#include "OSGMultiCoreBase.h"

namespace OSG
{
/// Several cores at once.
class OSG_GROUP_API MultiCore : public MultiCoreBase
{
  protected:
    MultiCore() = default;
    MultiCore(MultiCore const &) = default;
    ~MultiCore() override;

    friend Pattern;
};
} // namespace OSG
