#pragma once

#include "OSGNavigatorEvent.h"
#include "OSGWindowApi.h"

namespace OSG
{
/// Sees what a navigator is told; see Navigator::setEventObserver.
class OSG_WINDOW_API NavigatorObserver
{
  public:
    virtual ~NavigatorObserver();
    /// Called before the event is handled. It must not handle events itself.
    virtual void observe(NavigatorEvent const &event) = 0;
};
} // namespace OSG
