#include "OSGX11Server.h"

#ifdef OSG_WITH_XCB

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>

#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include "OSGSteadyClock.h"
#include "OSGX11KeySymbols.h"

namespace OSG
{
namespace
{
// One frame asks for some forty keys, and each question is a round trip to the server.
constexpr Int64 InputAge = SteadyTicksPerSecond / 1000;
// The event that tells of a new layout goes to the host, which need not know of this class.
constexpr Int64 LayoutAge = SteadyTicksPerSecond;

// Virtual-key codes of the mouse.
constexpr Int16 LeftButton = 1;
constexpr Int16 RightButton = 2;
constexpr Int16 MiddleButton = 4;

struct Free
{
    void operator()(void *block) const { std::free(block); }
};
template <class Reply>
using ReplyPtr = std::unique_ptr<Reply, Free>;

/// The answer to a request, null for an error, which is dropped here: left alone it would go to the
/// host's queue of events.
template <class Reply, class Cookie>
ReplyPtr<Reply> answer(xcb_connection_t *connection, Cookie cookie,
                       Reply *(*take)(xcb_connection_t *, Cookie, xcb_generic_error_t **))
{
    xcb_generic_error_t *error = nullptr;
    ReplyPtr<Reply> reply(take(connection, cookie, &error));
    std::free(error);
    return reply;
}

/// Waits for a request that has no answer.
void finish(xcb_connection_t *connection, xcb_void_cookie_t cookie)
{
    std::free(xcb_request_check(connection, cookie));
}

Int16 short_of(Int32 value)
{
    using Limits = std::numeric_limits<Int16>;
    return static_cast<Int16>(std::clamp<Int32>(value, Limits::min(), Limits::max()));
}
} // namespace

bool X11Server::serves(xcb_connection_t *connection)
{
    return connection != nullptr && xcb_connection_has_error(connection) == 0;
}

X11Server::X11Server(xcb_connection_t *connection)
    : _connection(connection)
    , _inputTicks(steady_ticks() - InputAge)
    , _layoutTicks(steady_ticks() - LayoutAge)
{
    xcb_screen_iterator_t const screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    if(screens.rem > 0)
        _root = screens.data->root;
    askForPointerHiding();
}

void X11Server::askForPointerHiding()
{
    constexpr UInt32 FirstThatHides = 4;
    // The version holds for all of the connection's users: a lower one could take requests away
    // from the host.
    constexpr UInt32 Newest = 6;
    xcb_query_extension_reply_t const *const extension =
        xcb_get_extension_data(_connection, &xcb_xfixes_id);
    if(extension == nullptr || extension->present == 0)
        return;
    auto const version = answer(_connection, xcb_xfixes_query_version(_connection, Newest, 0),
                                xcb_xfixes_query_version_reply);
    _hidesPointer = version != nullptr && version->major_version >= FirstThatHides;
}

// --- keys and focus ---

void X11Server::refreshInput()
{
    if(steady_ticks() - _inputTicks < InputAge)
        return;
    xcb_query_keymap_cookie_t const keysCookie = xcb_query_keymap(_connection);
    xcb_query_pointer_cookie_t const pointerCookie = xcb_query_pointer(_connection, _root);
    auto const keys = answer(_connection, keysCookie, xcb_query_keymap_reply);
    auto const pointer = answer(_connection, pointerCookie, xcb_query_pointer_reply);
    _input = {};
    if(keys != nullptr)
        std::copy_n(keys->keys, sizeof(_input.keys), _input.keys);
    if(pointer != nullptr)
        _input.buttons = pointer->mask;
    _inputTicks = steady_ticks();
}

void X11Server::refreshLayout()
{
    if(steady_ticks() - _layoutTicks < LayoutAge)
        return;
    xcb_setup_t const *const setup = xcb_get_setup(_connection);
    auto const count = static_cast<UInt8>(setup->max_keycode - setup->min_keycode + 1);
    auto const mapping =
        answer(_connection, xcb_get_keyboard_mapping(_connection, setup->min_keycode, count),
               xcb_get_keyboard_mapping_reply);
    _layout = {};
    if(mapping != nullptr)
    {
        xcb_keysym_t const *const first = xcb_get_keyboard_mapping_keysyms(mapping.get());
        _layout.symbols.assign(first,
                               first + xcb_get_keyboard_mapping_keysyms_length(mapping.get()));
        _layout.perKey = mapping->keysyms_per_keycode;
        _layout.firstCode = setup->min_keycode;
    }
    _layoutTicks = steady_ticks();
}

bool X11Server::isSymbolDown(UInt32 symbol) const
{
    // A symbol may stand on another key too, there with modifiers; the key that has it at the
    // lowest level is the one that people mean.
    for(UInt32 level = 0; level < _layout.perKey; ++level)
    {
        bool found = false;
        for(std::size_t i = level; i < _layout.symbols.size(); i += _layout.perKey)
        {
            if(_layout.symbols[i] != symbol)
                continue;
            found = true;
            std::size_t const code = _layout.firstCode + i / _layout.perKey;
            if((_input.keys[code / 8] >> (code % 8) & 1) != 0)
                return true;
        }
        if(found)
            return false;
    }
    return false;
}

bool X11Server::isDown(Int16 code)
{
    if(!serves())
        return false;
    refreshInput();
    switch(code)
    {
    case LeftButton:
        return (_input.buttons & XCB_BUTTON_MASK_1) != 0;
    case MiddleButton:
        return (_input.buttons & XCB_BUTTON_MASK_2) != 0;
    case RightButton:
        return (_input.buttons & XCB_BUTTON_MASK_3) != 0;
    default:
        break;
    }
    refreshLayout();
    for(UInt32 const symbol : x11_key_symbols(code))
    {
        if(symbol != 0 && isSymbolDown(symbol))
            return true;
    }
    return false;
}

bool X11Server::isWithin(UInt32 inner, UInt32 outer)
{
    while(inner != outer)
    {
        auto const tree =
            answer(_connection, xcb_query_tree(_connection, inner), xcb_query_tree_reply);
        if(tree == nullptr || tree->parent == 0 || tree->parent == tree->root)
            return false;
        inner = tree->parent;
    }
    return true;
}

bool X11Server::isFocused(UInt32 window)
{
    if(!serves() || window == 0)
        return false;
    auto const focus =
        answer(_connection, xcb_get_input_focus(_connection), xcb_get_input_focus_reply);
    if(focus == nullptr || focus->focus == XCB_INPUT_FOCUS_NONE ||
       focus->focus == XCB_INPUT_FOCUS_POINTER_ROOT)
        return false;
    return isWithin(focus->focus, window) || isWithin(window, focus->focus);
}

bool X11Server::isViewable(UInt32 window)
{
    if(!serves())
        return false;
    auto const attributes = answer(_connection, xcb_get_window_attributes(_connection, window),
                                   xcb_get_window_attributes_reply);
    return attributes != nullptr && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

// --- pointer ---

bool X11Server::grabPointer(UInt32 window)
{
    if(!serves())
        return false;
    constexpr UInt16 Events =
        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;
    constexpr UInt8 OnlyToThisWindow = 0;
    auto const grab =
        answer(_connection,
               xcb_grab_pointer(_connection, OnlyToThisWindow, window, Events, XCB_GRAB_MODE_ASYNC,
                                XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
               xcb_grab_pointer_reply);
    return grab != nullptr && grab->status == XCB_GRAB_STATUS_SUCCESS;
}

void X11Server::ungrabPointer()
{
    if(serves())
        finish(_connection, xcb_ungrab_pointer_checked(_connection, XCB_CURRENT_TIME));
}

Desktop::Point X11Server::getPointer()
{
    if(!serves())
        return {};
    auto const pointer =
        answer(_connection, xcb_query_pointer(_connection, _root), xcb_query_pointer_reply);
    return pointer != nullptr ? Desktop::Point{pointer->root_x, pointer->root_y} : Desktop::Point{};
}

void X11Server::setPointer(Desktop::Point position)
{
    if(serves())
        finish(_connection, xcb_warp_pointer_checked(_connection, XCB_NONE, _root, 0, 0, 0, 0,
                                                     short_of(position.x), short_of(position.y)));
}

void X11Server::showPointer(bool visible)
{
    if(!serves() || !_hidesPointer)
        return;
    finish(_connection, visible ? xcb_xfixes_show_cursor_checked(_connection, _root)
                                : xcb_xfixes_hide_cursor_checked(_connection, _root));
}

// --- windows ---

Desktop::Size X11Server::getSize(UInt32 window)
{
    if(!serves())
        return {};
    auto const geometry =
        answer(_connection, xcb_get_geometry(_connection, window), xcb_get_geometry_reply);
    return geometry != nullptr ? Desktop::Size{geometry->width, geometry->height} : Desktop::Size{};
}

Desktop::Point X11Server::toScreen(UInt32 window, Desktop::Point client)
{
    if(!serves())
        return client;
    auto const place = answer(_connection,
                              xcb_translate_coordinates(_connection, window, _root,
                                                        short_of(client.x), short_of(client.y)),
                              xcb_translate_coordinates_reply);
    return place != nullptr ? Desktop::Point{place->dst_x, place->dst_y} : client;
}
} // namespace OSG

#endif
