#include "OSGNavigatorObserver.h"

namespace OSG
{
NavigatorObserver::~NavigatorObserver() = default;
} // namespace OSG
