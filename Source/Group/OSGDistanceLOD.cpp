#include "OSGDistanceLOD.h"

namespace OSG
{
DistanceLOD::~DistanceLOD() = default;
} // namespace OSG
