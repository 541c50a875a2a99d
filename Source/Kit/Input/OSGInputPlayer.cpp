#include "OSGInputPlayer.h"

#include <numbers>
#include <utility>

#include "OSGMakeNode.h"
#include "OSGOrthographicCamera.h"
#include "OSGPerspectiveCamera.h"
#include "OSGTransform.h"

namespace OSG
{
CameraPose pose_of(NavigatorEngine &engine)
{
    engine.getMatrix(); // some engines update from, at and up only here
    return {engine.getFrom(), engine.getAt(), engine.getUp(), engine.getDistance()};
}

namespace
{
UnrecordedRefPtr<Camera> camera_of(InputRecording const &recording)
{
    if(recording.projection == InputRecording::Projection::Orthographic)
    {
        UnrecordedRefPtr<OrthographicCamera> const camera(OrthographicCamera::create());
        camera->setVerticalSize(static_cast<Real32>(recording.opening));
        return camera.get();
    }
    UnrecordedRefPtr<PerspectiveCamera> const camera(PerspectiveCamera::create());
    camera->setFov(static_cast<Real32>(recording.opening * std::numbers::pi / 180));
    return camera.get();
}

} // namespace

InputPlayer::InputPlayer(InputRecording const &recording, NavigatorEngine *engine, Node *scene,
                         UInt16 width, UInt16 height, std::shared_ptr<ScriptedDesktop> desktop)
    : _recording(recording)
    , _beacon(make_node(UnrecordedRefPtr<Transform>(Transform::create())))
    , _viewport(Viewport::create())
    , _window(WIN32Window::create())
    , _desktop(std::move(desktop))
{
    UnrecordedRefPtr<Camera> const camera = camera_of(recording);
    camera->setNear(recording.near);
    camera->setFar(recording.far);
    camera->setBeacon(_beacon);
    _viewport->setCamera(camera);
    _viewport->setRoot(scene);
    _window->setSize(width, height);
    _window->addPort(_viewport);
    if(scene != nullptr)
        scene->updateVolume();

    if(_desktop != nullptr)
        _desktop->show(*_window);

    _navigator.setMotionFactor(recording.motionFactor);
    _navigator.setRotationAngle(recording.rotationAngle);
    _navigator.setClickCenter(recording.clickCenter);
    _navigator.setClickNoIntersect(recording.noIntersect);
    _navigator.setEngine(engine);
    _navigator.setViewport(_viewport); // tells the engine too
    engine->set(recording.from, recording.at, recording.up);
    _navigator.updateCameraTransformation();
}

InputPlayer::~InputPlayer() = default;

bool InputPlayer::step()
{
    if(_position >= _recording.events.size())
        return false;
    play(_recording.events[_position]);
    ++_position;
    return true;
}

void InputPlayer::play(InputRecording::TimedEvent const &timed)
{
    switch(timed.what)
    {
    case InputRecording::What::Event:
        _navigator.handle(timed.event);
        break;
    case InputRecording::What::Key:
        if(_desktop != nullptr)
            _desktop->setKey(timed.code, timed.isOn);
        break;
    case InputRecording::What::Focus:
        if(_desktop != nullptr)
            _desktop->setFocus(timed.isOn ? _window->getHwnd() : nullptr);
        break;
    case InputRecording::What::Frame:
        if(_desktop != nullptr)
            _desktop->setTicks(timed.ticks);
        _navigator.updateCameraTransformation();
        break;
    }
}
} // namespace OSG
