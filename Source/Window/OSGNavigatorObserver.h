#pragma once

#include "OSGNavigatorEvent.h"
#include "OSGWindowApi.h"

namespace OSG
{
/// Sees every event that a navigator handles, and every frame; see Navigator::setEventObserver.
class OSG_WINDOW_API NavigatorObserver
{
  public:
    virtual ~NavigatorObserver();
    /// Called before the navigator handles the event. It must not pass events to the navigator.
    virtual void observe(NavigatorEvent const &event) = 0;
    /// Called before Navigator::updateCameraTransformation does its work, unless an engine calls
    /// that while it handles an event. The default does nothing.
    virtual void observeFrame();
};
} // namespace OSG
