#include "OSGInputRecorder.h"

#include <numbers>
#include <utility>

#include "OSGNavigator.h"
#include "OSGOrthographicCamera.h"
#include "OSGPerspectiveCamera.h"

namespace OSG
{
InputRecorder::InputRecorder(Navigator &navigator, Clock clock)
    : _navigator(navigator)
    , _clock(std::move(clock))
    , _begin(_clock())
{
    takeCamera();
    takePose();
    _recording.motionFactor = navigator.getMotionFactor();
    _recording.rotationAngle = navigator.getRotationAngle();
    _recording.clickCenter = navigator.getClickCenter();
    _recording.noIntersect = navigator.getClickNoIntersect();
    NavigatorEvent const pointer{NavigatorEvent::Hover, 0, 0, navigator.getLastX(),
                                 navigator.getLastY()};
    _recording.events.push_back({0, pointer});
    navigator.setEventObserver(this);
}

InputRecorder::~InputRecorder()
{
    // Another observer, such as a newer recorder, may have been set since.
    if(_navigator.getEventObserver() == this)
        _navigator.setEventObserver(nullptr);
}

void InputRecorder::takeCamera()
{
    Camera *const camera = _navigator.getViewport()->getCamera();
    _recording.near = camera->getNear();
    _recording.far = camera->getFar();
    if(auto const *orthographic = dynamic_cast<OrthographicCamera const *>(camera))
    {
        _recording.projection = InputRecording::Projection::Orthographic;
        _recording.opening = orthographic->getVerticalSize();
    }
    else if(auto const *perspective = dynamic_cast<PerspectiveCamera const *>(camera))
        _recording.opening = perspective->getFov() * 180 / std::numbers::pi;
}

void InputRecorder::takePose()
{
    NavigatorEngine &engine = *_navigator.getEngine();
    engine.getMatrix(); // some engines update from, at and up only here
    _recording.from = engine.getFrom();
    _recording.at = engine.getAt();
    _recording.up = engine.getUp();
    engine.set(_recording.from, _recording.at, _recording.up);
    _navigator.updateCameraTransformation(); // a replay begins with the camera at this pose
}

void InputRecorder::observe(NavigatorEvent const &event)
{
    _recording.events.push_back({_clock() - _begin, event});
}
} // namespace OSG
