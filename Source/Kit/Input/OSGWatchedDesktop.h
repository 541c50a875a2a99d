#pragma once

#include "OSGDesktop.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// A desktop that hands on what another one answers. A watcher sees the answers that decide how an
/// engine moves (keys, focus, clock) and says what the engine is told.
///
///     auto const desktop = std::make_shared<WatchedDesktop>(X11Desktop::create(connection));
///     Desktop::setCurrent(desktop); // before the engine is made
class OSG_TOLVANITEKIT_API WatchedDesktop : public Desktop
{
  public:
    /// Each call takes the true answer and returns the one to give.
    class Watcher
    {
      public:
        virtual bool takeKey(Int16 code, bool isDown) = 0;
        virtual bool takeFocus(bool isFocused) = 0;
        virtual Int64 takeTicks(Int64 ticks) = 0;

      protected:
        ~Watcher() = default;
    };

    /// Null stands for the current desktop.
    explicit WatchedDesktop(std::shared_ptr<Desktop> desktop);
    ~WatchedDesktop() override;

    /// Not owned; it has to take itself out before it ends. Null stands for none.
    void setWatcher(Watcher *watcher) { _watcher = watcher; }
    Watcher *getWatcher() const { return _watcher; }
    /// The desktop behind this one, whose answers nobody changes.
    Desktop &getTrueDesktop() { return *_desktop; }

    char const *missing() const override { return _desktop->missing(); }
    bool isDown(Int16 code) override;
    bool isFocused(NativeWindow window) override;
    NativeWindow getCapture() override { return _desktop->getCapture(); }
    void setCapture(NativeWindow window) override { _desktop->setCapture(window); }
    void releaseCapture() override { _desktop->releaseCapture(); }
    Point getPointer() override { return _desktop->getPointer(); }
    void setPointer(Point position) override { _desktop->setPointer(position); }
    void showPointer(bool visible) override { _desktop->showPointer(visible); }
    Size getClientSize(NativeWindow window) override { return _desktop->getClientSize(window); }
    Point toScreen(NativeWindow window, Point client) override
    {
        return _desktop->toScreen(window, client);
    }
    Int64 getTicksPerSecond() override { return _desktop->getTicksPerSecond(); }
    Int64 getTicks() override;
    void writeDebugText(char const *text) override { _desktop->writeDebugText(text); }

  private:
    std::shared_ptr<Desktop> _desktop;
    Watcher *_watcher = nullptr;
};
} // namespace OSG
