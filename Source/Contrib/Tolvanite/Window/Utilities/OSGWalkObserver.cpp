#include "OSGWalkObserver.h"

namespace OSG
{
WalkObserver::~WalkObserver() = default;
} // namespace OSG
