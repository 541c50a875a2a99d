#pragma once

/// \file
/// What an engine asks the desktop for: keys, focus, pointer, client area and clock.
///
/// A port without policy. The rules of hiding, capturing and wrapping belong to its callers. This
/// header needs Base alone, so that an implementation can include it beside the headers of a
/// system.

#include <memory>
#include <optional>

#include "OSGBaseTypes.h"
#include "OSGWindowWIN32Api.h"

namespace OSG
{
/// The desktop's handle of a window: an HWND on Windows, the number of a window on X11. Null stands
/// for no window.
using NativeWindow = void *;

/// All calls come from the thread of the window. No call throws, and none ends the process when the
/// server of the desktop is gone: it then answers as though nothing were pressed, focused or
/// captured.
class OSG_WINDOWWIN32_API Desktop
{
  public:
    /// Pixels, y downwards.
    struct Point
    {
        Int32 x = 0;
        Int32 y = 0;
    };
    struct Size
    {
        Int32 width = 0;
        Int32 height = 0;
    };

    Desktop() = default;
    Desktop(Desktop const &) = delete;
    Desktop &operator=(Desktop const &) = delete;
    virtual ~Desktop();

    /// The desktop that engines take when they are made. Where no host has set one, it serves
    /// nothing. Never null.
    static std::shared_ptr<Desktop> current();
    /// Null brings back the one that serves nothing. Engines that exist keep theirs.
    static void setCurrent(std::shared_ptr<Desktop> desktop);

    /// Why this desktop does not serve everything, in a few words; null where it does.
    virtual char const *missing() const = 0;

    // --- keys and focus ---
    /// True while the key or mouse button is down, whether or not a window has the focus. `code` is
    /// a virtual-key code: 1 and 2 are the left and the right mouse button, 'A' to 'Z' and '0' to
    /// '9' themselves. An unknown code is never down.
    virtual bool isDown(Int16 code) = 0;
    virtual bool isFocused(NativeWindow window) = 0;

    // --- pointer ---
    /// The window of this process that has captured the pointer, or null.
    virtual NativeWindow getCapture() = 0;
    /// Sends all motion and all buttons to `window`, until releaseCapture() or until the system
    /// takes the capture away.
    virtual void setCapture(NativeWindow window) = 0;
    virtual void releaseCapture() = 0;
    /// In screen coordinates.
    virtual Point getPointer() = 0;
    virtual void setPointer(Point position) = 0;
    virtual void showPointer(bool visible) = 0;

    // --- windows ---
    /// Size of the client area, 0 by 0 for an unknown window.
    virtual Size getClientSize(NativeWindow window) = 0;
    /// Carries a point from the client area of `window` to the screen.
    virtual Point toScreen(NativeWindow window, Point client) = 0;

    // --- clock ---
    /// Steps of getTicks() in a second. 0 where they are of 100 nanoseconds and may be set back.
    /// It does not change during the life of a desktop.
    virtual Int64 getTicksPerSecond() = 0;
    virtual Int64 getTicks() = 0;

    /// Text for the debugger of the system, where it has one.
    virtual void writeDebugText(char const *text);
};
} // namespace OSG
