// Drops files onto a window of an X server, as a file manager does, by the fifth version of the
// protocol XDND:
//   drop-files WINDOW FILE...
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include <xcb/xcb.h>

namespace
{
using Data = std::array<uint32_t, 5>;

class Source
{
  public:
    Source(xcb_connection_t *connection, xcb_window_t target, std::string uris)
        : _connection(connection)
        , _target(target)
        , _uris(std::move(uris))
        , _window(xcb_generate_id(connection))
    {
        xcb_screen_t const *const screen =
            xcb_setup_roots_iterator(xcb_get_setup(_connection)).data;
        xcb_create_window(_connection, XCB_COPY_FROM_PARENT, _window, screen->root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
        xcb_set_selection_owner(_connection, _window, atom("XdndSelection"), XCB_CURRENT_TIME);
    }

    // True when the target has taken the files.
    bool drop()
    {
        constexpr uint32_t Version = 5U << 24;
        send("XdndEnter", {_window, Version, atom("text/uri-list"), 0, 0});
        send("XdndPosition", {_window, 0, (40U << 16) | 40U, 0, atom("XdndActionCopy")});
        return serve();
    }

  private:
    xcb_atom_t atom(char const *name) const
    {
        auto *const reply = xcb_intern_atom_reply(
            _connection,
            xcb_intern_atom(_connection, 0, static_cast<uint16_t>(std::strlen(name)), name),
            nullptr);
        if(reply == nullptr)
            return XCB_ATOM_NONE;
        xcb_atom_t const found = reply->atom;
        std::free(reply);
        return found;
    }

    void send(char const *type, Data const &data) const
    {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = _target;
        event.type = atom(type);
        std::copy(data.begin(), data.end(), event.data.data32);
        xcb_send_event(_connection, 0, _target, 0, reinterpret_cast<char const *>(&event));
        xcb_flush(_connection);
    }

    void answer(xcb_selection_request_event_t const &request) const
    {
        xcb_change_property(_connection, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                            request.target, 8, static_cast<uint32_t>(_uris.size()), _uris.data());
        xcb_selection_notify_event_t notify{};
        notify.response_type = XCB_SELECTION_NOTIFY;
        notify.time = request.time;
        notify.requestor = request.requestor;
        notify.selection = request.selection;
        notify.target = request.target;
        notify.property = request.property;
        xcb_send_event(_connection, 0, request.requestor, 0,
                       reinterpret_cast<char const *>(&notify));
        xcb_flush(_connection);
    }

    // The target says that it wants the drop, asks for the list, and says that it has it.
    bool serve()
    {
        xcb_atom_t const status = atom("XdndStatus");
        xcb_atom_t const finished = atom("XdndFinished");
        while(xcb_generic_event_t *const event = xcb_wait_for_event(_connection))
        {
            uint8_t const type = event->response_type & 0x7f;
            auto const *const message = reinterpret_cast<xcb_client_message_event_t *>(event);
            bool const isDone = type == XCB_CLIENT_MESSAGE && message->type == finished;
            if(type == XCB_SELECTION_REQUEST)
                answer(*reinterpret_cast<xcb_selection_request_event_t *>(event));
            else if(type == XCB_CLIENT_MESSAGE && message->type == status)
                send("XdndDrop", {_window, 0, XCB_CURRENT_TIME, 0, 0});
            std::free(event);
            if(isDone)
                return true;
        }
        return false;
    }

    xcb_connection_t *_connection;
    xcb_window_t _target;
    std::string _uris;
    xcb_window_t _window;
};
} // namespace

int main(int argc, char **argv)
{
    if(argc < 3)
    {
        std::fprintf(stderr, "usage: drop-files WINDOW FILE...\n");
        return 2;
    }
    std::string uris;
    for(int i = 2; i < argc; ++i)
        uris += "file://" + std::filesystem::absolute(argv[i]).string() + "\r\n";
    xcb_connection_t *const connection = xcb_connect(nullptr, nullptr);
    bool const isDone =
        xcb_connection_has_error(connection) == 0 &&
        Source(connection, static_cast<xcb_window_t>(std::strtoul(argv[1], nullptr, 0)), uris)
            .drop();
    xcb_disconnect(connection);
    return isDone ? 0 : 1;
}
