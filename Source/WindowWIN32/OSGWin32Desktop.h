#pragma once

#include "OSGDesktop.h"

#ifdef _WIN32

namespace OSG
{
/// The desktop of Windows, for the windows of the calling thread. It serves everything.
///
/// The frequency of the performance counter is asked once, when the library is loaded. Where the
/// counter has none, the ticks are those of the system's time, 100 nanoseconds each.
class OSG_WINDOWWIN32_API Win32Desktop : public Desktop
{
  public:
    Win32Desktop() = default;
    ~Win32Desktop() override;

    char const *missing() const override { return nullptr; }
    bool isDown(Int16 code) override;
    bool isFocused(NativeWindow window) override;
    NativeWindow getCapture() override;
    void setCapture(NativeWindow window) override;
    void releaseCapture() override;
    Point getPointer() override;
    void setPointer(Point position) override;
    /// Windows counts these calls: as many must show the pointer as have hidden it.
    void showPointer(bool visible) override;
    Size getClientSize(NativeWindow window) override;
    Point toScreen(NativeWindow window, Point client) override;
    Int64 getTicksPerSecond() override;
    Int64 getTicks() override;
    void writeDebugText(char const *text) override;
};
} // namespace OSG

#endif
