#pragma once

#include "OSGWatchedDesktop.h"

namespace OSG
{
/// A desktop's clock that stands still while its host waits for events. A walk measures the time
/// from frame to frame: in a host that draws on demand its first step would otherwise count all
/// that the host has slept.
///
///     auto const desktop = std::make_shared<WatchedDesktop>(X11Desktop::create(connection));
///     RestingClock clock(desktop);
///     Desktop::setCurrent(desktop); // before the engine is made
///     ...
///     clock.rest();
///     waitForEvents();
///     clock.wake();
class OSG_TOLVANITEKIT_API RestingClock : private WatchedDesktop::Watcher
{
  public:
    /// Becomes the watcher of the desktop.
    explicit RestingClock(std::shared_ptr<WatchedDesktop> desktop);
    RestingClock(RestingClock const &) = delete;
    RestingClock &operator=(RestingClock const &) = delete;
    virtual ~RestingClock();

    /// Twice counts as once; so does wake().
    void rest();
    void wake();

  private:
    bool takeKey(Int16 code, bool isDown) override;
    bool takeFocus(bool isFocused) override;
    Int64 takeTicks(Int64 ticks) override;

    std::shared_ptr<WatchedDesktop> _desktop;
    Int64 _rested = 0;    // ticks in all
    Int64 _restBegin = 0; // while it rests
    bool _isResting = false;
};
} // namespace OSG
