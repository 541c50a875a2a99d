#include "OSGX11Desktop.h"

#ifdef OSG_WITH_XCB
#include "OSGSteadyClock.h"
#include "OSGX11Server.h"
#endif

namespace OSG
{
X11Desktop::~X11Desktop() = default;

#ifdef OSG_WITH_XCB
namespace
{
UInt32 id_of(NativeWindow window)
{
    return static_cast<UInt32>(reinterpret_cast<std::uintptr_t>(window));
}

class ConnectedDesktop : public X11Desktop
{
  public:
    explicit ConnectedDesktop(xcb_connection_t *connection)
        : _server(connection)
    {
    }

    char const *missing() const override
    {
        return _server.canHidePointer() ? nullptr
                                        : "X11 without XFixes: the pointer cannot be hidden";
    }
    void forgetConnection() override { _server.forget(); }

    bool isDown(Int16 code) override { return _server.isDown(code); }
    bool isFocused(NativeWindow window) override { return _server.isFocused(id_of(window)); }

    NativeWindow getCapture() override
    {
        // The server ends a grab of a window that can no longer be seen, and tells nobody.
        if(_captured != nullptr && !_server.isViewable(id_of(_captured)))
            _captured = nullptr;
        return _captured;
    }
    void setCapture(NativeWindow window) override
    {
        if(_server.grabPointer(id_of(window)))
            _captured = window;
    }
    void releaseCapture() override
    {
        if(_captured != nullptr)
            _server.ungrabPointer();
        _captured = nullptr;
    }

    Point getPointer() override { return _server.getPointer(); }
    void setPointer(Point position) override { _server.setPointer(position); }
    void showPointer(bool visible) override
    {
        // The server counts the requests to hide; here they do not add up.
        if(visible != _visible)
            _server.showPointer(visible);
        _visible = visible;
    }

    Size getClientSize(NativeWindow window) override { return _server.getSize(id_of(window)); }
    Point toScreen(NativeWindow window, Point client) override
    {
        return _server.toScreen(id_of(window), client);
    }

    Int64 getTicksPerSecond() override { return SteadyTicksPerSecond; }
    Int64 getTicks() override { return steady_ticks(); }

  private:
    X11Server _server;
    NativeWindow _captured = nullptr;
    bool _visible = true;
};
} // namespace

std::shared_ptr<X11Desktop> X11Desktop::create(xcb_connection_t *connection)
{
    if(!X11Server::serves(connection))
        return nullptr;
    return std::make_shared<ConnectedDesktop>(connection);
}
#else
std::shared_ptr<X11Desktop> X11Desktop::create(xcb_connection_t *) { return nullptr; }
#endif
} // namespace OSG
