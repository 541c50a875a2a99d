#pragma once

#include "OSGDesktop.h"

struct xcb_connection_t;

namespace OSG
{
/// The desktop of an X server, on the connection of the host's toolkit: a capture on another
/// connection would take motion and buttons away from the toolkit.
///
///     xcb_connection_t *connection = XGetXCBConnection(glfwGetX11Display());
///     OSG::Desktop::setCurrent(OSG::X11Desktop::create(connection));
///     window->setHwnd(reinterpret_cast<OSG::NativeWindow>(glfwGetX11Window(glfwWindow)));
///
/// It reads no event of the connection, sets no handler of errors and never ends the process. A
/// window that does not exist, and a server that is gone, give what OSGDesktop.h says of a lost
/// server.
///
/// - A virtual-key code is the key that bears its symbol without a modifier, or else the first key
///   group or level that has it. 16 and 17 (Shift, Ctrl) are either of the two keys. The numeric pad
///   is not asked. Key states are at most a millisecond old, and a new keyboard layout is seen
///   within a second.
/// - A window is focused if the focus is on it, on a window around it other than the root, or on a
///   window in it.
/// - A capture ends by itself when its window can no longer be seen.
/// - The pointer is hidden on the whole screen. Screen coordinates are those of the first screen.
class OSG_WINDOWWIN32_API X11Desktop : public Desktop
{
  public:
    /// The connection stays the host's and has to be open until forgetConnection() or the end of
    /// the desktop. Null where the connection has failed or the library was built without XCB.
    static std::shared_ptr<X11Desktop> create(xcb_connection_t *connection);
    ~X11Desktop() override;

    /// From now on the desktop answers as if the server were gone. For a host that closes the
    /// connection while engines still have this desktop.
    virtual void forgetConnection() = 0;

  protected:
    X11Desktop() = default;
};
} // namespace OSG
