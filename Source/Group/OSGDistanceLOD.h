#pragma once

#include "OSGDistanceLODBase.h"

namespace OSG
{
/// Shows a child by the distance of the viewer.
class OSG_GROUP_API DistanceLOD : public DistanceLODBase
{
  protected:
    DistanceLOD() = default;
    DistanceLOD(DistanceLOD const &) = default;
    ~DistanceLOD() override;

    friend Pattern;
};
} // namespace OSG
