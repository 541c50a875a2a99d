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
    : _beacon(make_node(UnrecordedRefPtr<Transform>(Transform::create())))
    , _viewport(Viewport::create())
    , _window(WIN32Window::create())
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

    if(desktop != nullptr)
        desktop->show(*_window);

    _navigator.setEngine(engine);
    _navigator.setViewport(_viewport); // tells the engine too
    InputReplay::Host host;
    host.desktop = std::move(desktop);
    host.window = getWindow();
    _replay.emplace(recording, _navigator, std::move(host));
}

InputPlayer::~InputPlayer() = default;
} // namespace OSG
