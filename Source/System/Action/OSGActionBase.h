#pragma once

#include "OSGMemoryObject.h"

namespace OSG
{
/// What traversals have in common.
class OSG_SYSTEM_API ActionBase : public MemoryObject
{
  public:
    /// Result of every enter and leave function.
    enum ResultE
    {
        Continue = 0, ///< go on and descend
        Skip = 1      ///< do not descend below this node; its leave function is not called
    };

  protected:
    ActionBase() = default;
    ActionBase(ActionBase const &) = default;
    ~ActionBase() override;
};
} // namespace OSG
