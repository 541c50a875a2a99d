#pragma once

#include "OSGDesktop.h"

namespace OSG
{
/// A desktop that serves nothing but a clock: nothing is pressed, focused or captured.
class OSG_WINDOWWIN32_API AbsentDesktop : public Desktop
{
  public:
    /// `reason` is what missing() says. It is not copied and has to live on.
    explicit AbsentDesktop(char const *reason);
    ~AbsentDesktop() override;

    char const *missing() const override { return _reason; }
    bool isDown(Int16 code) override;
    bool isFocused(NativeWindow window) override;
    NativeWindow getCapture() override;
    void setCapture(NativeWindow window) override;
    void releaseCapture() override;
    Point getPointer() override;
    void setPointer(Point position) override;
    void showPointer(bool visible) override;
    Size getClientSize(NativeWindow window) override;
    Point toScreen(NativeWindow window, Point client) override;
    Int64 getTicksPerSecond() override;
    Int64 getTicks() override;

  private:
    char const *_reason;
};

/// The desktop for a window on Wayland, which tells a client neither the state of the keys nor
/// lets it move the pointer.
OSG_WINDOWWIN32_API std::shared_ptr<Desktop> make_wayland_desktop();
} // namespace OSG
