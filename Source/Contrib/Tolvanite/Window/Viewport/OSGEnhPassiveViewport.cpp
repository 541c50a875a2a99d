#include "OSGEnhPassiveViewport.h"

namespace OSG
{
EnhPassiveViewport::~EnhPassiveViewport() = default;

bool EnhPassiveViewport::isPassive() const { return true; }
} // namespace OSG
