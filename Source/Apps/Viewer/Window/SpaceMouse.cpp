#include "SpaceMouse.h"

#ifdef VIEWER_WITH_SPNAV

#include <atomic>
#include <thread>

#include <poll.h>
#include <spnav.h>
#include <unistd.h>

namespace Viewer
{
/// Waits for the daemon in a thread of its own: the toolkit waits for its own events alone.
class SpaceMouse::Listener
{
  public:
    explicit Listener(void (*wake)())
        : _wake(wake)
    {
        if(::pipe(_end) == 0)
            _thread = std::thread([this] { listen(); });
    }
    ~Listener()
    {
        if(!_thread.joinable())
            return;
        ::close(_end[1]);
        _isEnding = true;
        _hasEvent = false;
        _hasEvent.notify_one();
        _thread.join();
        ::close(_end[0]);
    }
    Listener(Listener const &) = delete;
    Listener &operator=(Listener const &) = delete;

    bool hasEvent() const { return _hasEvent; }
    /// What there was is read.
    void goOn()
    {
        _hasEvent = false;
        _hasEvent.notify_one();
    }

  private:
    void listen()
    {
        pollfd files[] = {{spnav_fd(), POLLIN, 0}, {_end[0], POLLIN, 0}};
        while(::poll(files, 2, -1) >= 0 && files[1].revents == 0)
        {
            _hasEvent = true;
            if(_isEnding) // nobody reads any more
                return;
            _wake();
            _hasEvent.wait(true);
            if((files[0].revents & (POLLHUP | POLLERR)) != 0)
                files[0].fd = -1; // the daemon has ended
        }
    }

    void (*_wake)();
    int _end[2] = {-1, -1}; // closed to end the thread
    std::atomic<bool> _hasEvent = false;
    std::atomic<bool> _isEnding = false;
    std::thread _thread;
};

namespace
{
// The cap's z points away from the user. A full deflection is about 350.
OSG::Vec3f in_our_axes(int x, int y, int z)
{
    constexpr OSG::Real32 Full = 350;
    return OSG::Vec3f(static_cast<OSG::Real32>(x), static_cast<OSG::Real32>(y),
                      static_cast<OSG::Real32>(-z)) /
           Full;
}
} // namespace

SpaceMouse::SpaceMouse(void (*wake)())
{
    if(spnav_open() != -1)
        _listener = std::make_unique<Listener>(wake);
}

SpaceMouse::~SpaceMouse()
{
    if(!isThere())
        return;
    _listener.reset();
    spnav_close();
}

SpaceMouse::Deflection const &SpaceMouse::read()
{
    if(!isThere() || !_listener->hasEvent())
        return _deflection;
    bool hasRead = false;
    spnav_event event;
    while(spnav_poll_event(&event) != 0)
    {
        hasRead = true;
        if(event.type != SPNAV_EVENT_MOTION)
            continue;
        spnav_event_motion const &motion = event.motion;
        _deflection.push = in_our_axes(motion.x, motion.y, motion.z);
        _deflection.turn = in_our_axes(motion.rx, motion.ry, motion.rz);
    }
    if(!hasRead) // the daemon has ended
        _deflection = Deflection();
    _listener->goOn();
    return _deflection;
}
} // namespace Viewer

#else

namespace Viewer
{
class SpaceMouse::Listener
{
};

SpaceMouse::SpaceMouse(void (*)()) {}
SpaceMouse::~SpaceMouse() = default;

SpaceMouse::Deflection const &SpaceMouse::read() { return _deflection; }
} // namespace Viewer

#endif
