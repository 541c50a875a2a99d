#include "OSGNavigatorObserver.h"

namespace OSG
{
NavigatorObserver::~NavigatorObserver() = default;

void NavigatorObserver::observeFrame() {}
} // namespace OSG
