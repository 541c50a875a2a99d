#include "OSGScreenLOD.h"

namespace OSG
{
ScreenLOD::~ScreenLOD() = default;
} // namespace OSG
