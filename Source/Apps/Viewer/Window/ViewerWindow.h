#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "OSGDesktop.h"

struct GLFWwindow;

namespace Viewer
{
/// Hears of the events of a window. Positions are in the toolkit's units.
class WindowListener
{
  public:
    virtual ~WindowListener();
    virtual void pointerMoved(double x, double y) = 0;
    virtual void buttonPressed(OSG::Int16 button, OSG::UInt16 modifiers) = 0;
    virtual void buttonReleased(OSG::Int16 button, OSG::UInt16 modifiers) = 0;
    virtual void wheelTurned(double steps) = 0;
    /// `code` is a virtual-key code. A key that is held is told as pressed again.
    virtual void keyPressed(OSG::Int16 code, OSG::UInt16 modifiers) = 0;
    virtual void keyReleased(OSG::Int16 code, OSG::UInt16 modifiers) = 0;
    /// A character as the layout of the keyboard has it, beside the key.
    virtual void characterTyped(unsigned int character) = 0;
    virtual void focusLost() = 0;
    virtual void filesDropped(std::vector<std::string> const &files) = 0;
};

/// A window of GLFW with a context of OpenGL 2.1 or later, current in the thread that opened it,
/// and Dear ImGui in it. There is one at a time.
class ViewerWindow
{
  public:
    struct Size
    {
        int width = 0;
        int height = 0;
    };

    /// Null, with half a sentence in `missing`, where there is no display or no OpenGL. Where the
    /// driver has no multisampling of that degree, the window goes without it.
    static std::unique_ptr<ViewerWindow> open(Size size, int samples, std::string &missing);
    ~ViewerWindow();
    ViewerWindow(ViewerWindow const &) = delete;
    ViewerWindow &operator=(ViewerWindow const &) = delete;

    /// Not owned; null for none.
    void setListener(WindowListener *listener) { _listener = listener; }

    /// In device pixels; 0 while the window is an icon.
    Size getPixels() const;
    /// Device pixels in a unit of positions.
    double getPixelScale() const;
    /// How much larger than usual the user wants texts.
    float getContentScale() const;
    /// Where the pointer is, in the toolkit's units.
    void getPointer(double &x, double &y) const;
    /// Where it was at the event that is told now: it may have gone on since.
    void getPointerOfEvent(double &x, double &y) const;
    void setTitle(std::string const &title);

    bool isClosing() const;
    void close();
    /// The user has closed the window, but it stays.
    void stay();
    /// Handles the events that are there, or waits until one comes, at most for `seconds`. Whether
    /// one has come.
    bool handleEvents(std::optional<double> seconds);
    /// Lets handleEvents return, from any thread.
    static void wake();
    void swap();

    /// The desktop of the window; null where it gives no keys.
    std::shared_ptr<OSG::Desktop> makeDesktop();
    OSG::NativeWindow getHandle() const;

  private:
    explicit ViewerWindow(GLFWwindow *window);
    void listen();
    struct Callbacks;
    struct KeyEvent
    {
        int key;
        int scancode;
        int action;
        int modifiers;
    };
    void tellPanels(KeyEvent const &event);
    void tellLateReleases();

    GLFWwindow *_window;
    WindowListener *_listener = nullptr;
    std::shared_ptr<OSG::Desktop> _desktop;
    bool _hasEvent = false;
    std::optional<std::pair<double, double>> _toldPointer;
    std::set<int> _pressedKeys; // since events were handled last
    std::vector<KeyEvent> _lateReleases;
};
} // namespace Viewer
