#pragma once

#include <vector>

#include "OSGDesktop.h"

struct xcb_connection_t;

namespace OSG
{
/// The questions that a desktop asks an X server, each by its own requests. No answer stands for
/// false, none, or the origin. Windows are the server's numbers, 0 is none.
class X11Server
{
  public:
    /// Whether the connection exists and has not failed.
    static bool serves(xcb_connection_t *connection);

    /// Expects a connection that serves.
    explicit X11Server(xcb_connection_t *connection);
    X11Server(X11Server const &) = delete;
    X11Server &operator=(X11Server const &) = delete;

    void forget() { _connection = nullptr; }

    bool isDown(Int16 code);
    /// Whether the focus is on the window, within it, or on a window around it but the root.
    bool isFocused(UInt32 window);
    bool isViewable(UInt32 window);

    /// Whether the grab was granted.
    bool grabPointer(UInt32 window);
    void ungrabPointer();
    Desktop::Point getPointer();
    void setPointer(Desktop::Point position);
    bool canHidePointer() const { return _hidesPointer; }
    void showPointer(bool visible);

    Desktop::Size getSize(UInt32 window);
    Desktop::Point toScreen(UInt32 window, Desktop::Point client);

  private:
    /// Which keys and buttons are down.
    struct Input
    {
        UInt8 keys[32] = {}; ///< a bit for each key code
        UInt16 buttons = 0;  ///< the mask of modifiers and buttons
    };
    /// The symbols of the keys: `perKey` of them from `firstCode` on.
    struct Layout
    {
        std::vector<UInt32> symbols;
        UInt32 perKey = 0;
        UInt32 firstCode = 0;
    };

    bool serves() const { return serves(_connection); }
    void askForPointerHiding();
    void refreshInput();
    void refreshLayout();
    bool isSymbolDown(UInt32 symbol) const;
    /// Whether `inner` is `outer` or lies in it. The root contains nothing here.
    bool isWithin(UInt32 inner, UInt32 outer);

    xcb_connection_t *_connection;
    UInt32 _root = 0;
    bool _hidesPointer = false;
    Input _input;
    Int64 _inputTicks; ///< when _input was read
    Layout _layout;
    Int64 _layoutTicks;
};
} // namespace OSG
