#include "OSGWalkPlayer.h"

#include <algorithm>
#include <new>

#include "OSGPerspectiveCamera.h"

namespace OSG
{
namespace
{
/// An engine that asks `desktop`.
UnrecordedRefPtr<WASDWalkEngine> make_engine(std::shared_ptr<Desktop> const &desktop)
{
    std::shared_ptr<Desktop> const before = Desktop::current();
    Desktop::setCurrent(desktop);
    UnrecordedRefPtr<WASDWalkEngine> engine(WASDWalkEngine::create());
    Desktop::setCurrent(before);
    if(engine == nullptr)
        throw std::bad_alloc();
    return engine;
}
} // namespace

WalkPlayer::WalkPlayer()
    : _desktop(std::make_shared<ScriptedDesktop>())
    , _engine(make_engine(_desktop))
    , _viewport(Viewport::create())
    , _window(WIN32Window::create())
{
    _window->setSize(Width, Height);
    _window->addPort(_viewport);
    _desktop->show(*_window);
    UnrecordedRefPtr<PerspectiveCamera> const camera(PerspectiveCamera::create());
    _viewport->setCamera(camera);
    _navigator.setEngine(_engine);
    _navigator.setViewport(_viewport);
    _engine->setWalkObserver(this);
}

WalkPlayer::~WalkPlayer() { _engine->setWalkObserver(nullptr); }

void WalkPlayer::begin(Node *scene, Pnt3f const &from, Pnt3f const &at, Vec3f const &up)
{
    _viewport->setRoot(scene);
    if(scene != nullptr)
        scene->updateVolume();
    _engine->onViewportChanged(&_navigator);
    _engine->set(from, at, up);
    // The engine knows its navigator by an event.
    _navigator.moveTo(0, 0);
}

void WalkPlayer::play(WalkScriptLine const &line)
{
    _desktop->releaseAllKeys();
    for(Int16 const key : line.keys)
        _desktop->setKey(key, true);
    if(line.holds(WalkKeys::Space))
        _navigator.keyPressEx(WalkKeys::Space, NavigatorEvent::KeyDown | NavigatorEvent::VirtualKey,
                              0, 0);
    constexpr Int16 StepKeys[] = {'W', 'S', 'A', 'D', 'X', 'Y'};
    bool const steps = std::any_of(std::begin(StepKeys), std::end(StepKeys),
                                   [&line](Int16 key) { return line.holds(key); });
    UInt64 const frames = (UInt64(line.milliseconds) + _frameMilliseconds - 1) / _frameMilliseconds;
    for(UInt64 frame = 0; frame < frames; ++frame)
        playFrame(steps);
}

void WalkPlayer::playFrame(bool steps)
{
    Pnt3f const before = _engine->getFrom();
    std::size_t const firstEvent = _events.size();
    _desktop->advance(_frameMilliseconds);
    _milliseconds += _frameMilliseconds;
    _navigator.updateCameraTransformation();
    WalkPose const pose{_milliseconds, _engine->getFrom(), _engine->getAt(), _engine->getUp(),
                        steps && _engine->getFrom() == before};
    _poses.push_back(pose);
    for(std::size_t i = firstEvent; i < _events.size(); ++i)
    {
        _events[i].milliseconds = _milliseconds;
        _events[i].position = pose.from;
    }
}

void WalkPlayer::observe(WalkStep const &step)
{
    _queries += step.queries;
    append_walk_events(step, _engine->ground_distance(), _events);
}
} // namespace OSG
