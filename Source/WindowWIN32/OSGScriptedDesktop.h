#pragma once

#include <map>
#include <set>
#include <string>

#include "OSGDesktop.h"

namespace OSG
{
class WIN32Window;

/// A desktop without a system behind it: a host or a test says which keys are down, which window
/// has the focus, where the pointer is and what time it is. It has one screen without edges.
///
///     auto const desktop = std::make_shared<ScriptedDesktop>();
///     desktop->setWindow(window, {0, 0}, {800, 600});
///     desktop->setFocus(window);
///     Desktop::setCurrent(desktop);
///     ...
///     desktop->setKey('W', true);
///     desktop->advance(16);
class OSG_WINDOWWIN32_API ScriptedDesktop : public Desktop
{
  public:
    /// The clock has milliseconds unless the host says otherwise. 0 stands for a clock without a
    /// frequency, see getTicksPerSecond().
    explicit ScriptedDesktop(Int64 ticksPerSecond = 1000);
    ~ScriptedDesktop() override;

    // --- what the host plays ---
    void setKey(Int16 code, bool isDown);
    void releaseAllKeys();
    /// Null takes the focus away from every window.
    void setFocus(NativeWindow window) { _focus = window; }
    /// The client area of a window: its left top corner on the screen, and its size. A window that
    /// was never set lies at (0, 0) and has no size.
    void setWindow(NativeWindow window, Point corner, Size size);
    /// Puts a window of the scene graph, with its size and the focus, into the corner of the
    /// screen. Its own address becomes its handle: nothing looks behind it.
    void show(WIN32Window &window);
    /// As the system takes the capture away.
    void loseCapture() { _capture = nullptr; }
    void setTicks(Int64 ticks) { _ticks = ticks; }
    void advance(Int64 ticks) { _ticks += ticks; }

    // --- what a caller has done ---
    bool isPointerVisible() const { return _isPointerVisible; }
    /// All texts for the debugger, one after the other.
    std::string const &getDebugText() const { return _debugText; }

    // --- Desktop ---
    char const *missing() const override { return nullptr; }
    bool isDown(Int16 code) override { return _keysDown.count(code) != 0; }
    /// False for null.
    bool isFocused(NativeWindow window) override { return window != nullptr && window == _focus; }
    NativeWindow getCapture() override { return _capture; }
    void setCapture(NativeWindow window) override { _capture = window; }
    void releaseCapture() override { _capture = nullptr; }
    Point getPointer() override { return _pointer; }
    void setPointer(Point position) override { _pointer = position; }
    void showPointer(bool visible) override { _isPointerVisible = visible; }
    Size getClientSize(NativeWindow window) override;
    Point toScreen(NativeWindow window, Point client) override;
    Int64 getTicksPerSecond() override { return _ticksPerSecond; }
    Int64 getTicks() override { return _ticks; }
    void writeDebugText(char const *text) override { _debugText += text; }

  private:
    struct Client
    {
        Point corner;
        Size size;
    };

    std::set<Int16> _keysDown;
    std::map<NativeWindow, Client> _windows;
    std::string _debugText;
    NativeWindow _focus = nullptr;
    NativeWindow _capture = nullptr;
    Point _pointer;
    Int64 _ticksPerSecond;
    Int64 _ticks = 0;
    bool _isPointerVisible = true;
};
} // namespace OSG
