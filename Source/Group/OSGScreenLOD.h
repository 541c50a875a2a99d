#pragma once

#include "OSGScreenLODBase.h"

namespace OSG
{
/// Shows a child by the share of the screen that it takes.
class OSG_GROUP_API ScreenLOD : public ScreenLODBase
{
  protected:
    ScreenLOD() = default;
    ScreenLOD(ScreenLOD const &) = default;
    ~ScreenLOD() override;

    friend Pattern;
};
} // namespace OSG
