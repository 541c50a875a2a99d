#include "OSGInputRecorder.h"

#include <numbers>
#include <utility>

#include "OSGNavigator.h"
#include "OSGOrthographicCamera.h"
#include "OSGPerspectiveCamera.h"

namespace OSG
{
InputRecorder::InputRecorder(Navigator &navigator, Clock clock,
                             std::shared_ptr<WatchedDesktop> desktop)
    : _navigator(navigator)
    , _clock(std::move(clock))
    , _begin(_clock())
    , _desktop(std::move(desktop))
{
    takeCamera();
    if(_desktop != nullptr)
        beginWithDesktop();
    else
    {
        takePose();
        NavigatorEvent const pointer{NavigatorEvent::Hover, 0, 0, navigator.getLastX(),
                                     navigator.getLastY()};
        _recording.events.push_back({0, pointer});
    }
    _recording.motionFactor = navigator.getMotionFactor();
    _recording.rotationAngle = navigator.getRotationAngle();
    _recording.clickCenter = navigator.getClickCenter();
    _recording.noIntersect = navigator.getClickNoIntersect();
    navigator.setEventObserver(this);
}

InputRecorder::~InputRecorder()
{
    // Another observer, such as a newer recorder, may have been set since.
    if(_navigator.getEventObserver() == this)
        _navigator.setEventObserver(nullptr);
    if(_desktop != nullptr && _desktop->getWatcher() == this)
        _desktop->setWatcher(nullptr);
}

// The engine of a replay has just been made, and its pose has been set: its next step counts from
// now, no key has moved it, and a look begins where the pointer is.
void InputRecorder::beginWithDesktop()
{
    _recording.ticksPerSecond = _desktop->getTicksPerSecond();
    _beginTicks = _desktop->getTrueDesktop().getTicks();
    _desktop->setWatcher(this);
    NavigatorObserver *const other = _navigator.getEventObserver();
    _navigator.setEventObserver(nullptr);
    _isBeginning = true;
    handleFirst(NavigatorEvent::Hover, 0);
    _navigator.updateCameraTransformation();
    handleFirst(NavigatorEvent::Idle, -1);
    takePose();
    _isBeginning = false;
    _navigator.setEventObserver(other);
}

void InputRecorder::handleFirst(NavigatorEvent::Kind kind, Int16 code)
{
    NavigatorEvent const event{kind, code, 0, _navigator.getLastX(), _navigator.getLastY()};
    _navigator.handle(event);
    _recording.events.push_back({0, event});
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

void InputRecorder::observeFrame()
{
    if(_desktop == nullptr)
        return;
    _frameTicks = _desktop->getTrueDesktop().getTicks() - _beginTicks;
    InputRecording::TimedEvent frame{_clock() - _begin};
    frame.what = InputRecording::What::Frame;
    frame.ticks = _frameTicks;
    _recording.events.push_back(frame);
}

// --- what the engine asks ---

// The event or frame that the engine is handling was recorded before it asked. In a replay the
// change has to be there when it asks.
void InputRecorder::insertChange(InputRecording::TimedEvent const &change)
{
    std::vector<InputRecording::TimedEvent> &events = _recording.events;
    events.insert(events.end() - 1, change);
    events[events.size() - 2].seconds = events.back().seconds;
}

bool InputRecorder::takeKey(Int16 code, bool isDown)
{
    if(_isBeginning)
        return false;
    bool const changes = isDown ? _keysDown.insert(code).second : _keysDown.erase(code) != 0;
    if(changes)
    {
        InputRecording::TimedEvent change{0};
        change.what = InputRecording::What::Key;
        change.code = code;
        change.isOn = isDown;
        insertChange(change);
    }
    return isDown;
}

bool InputRecorder::takeFocus(bool isFocused)
{
    if(_isBeginning)
        return true;
    if(std::exchange(_hasFocus, isFocused) != isFocused)
    {
        InputRecording::TimedEvent change{0};
        change.what = InputRecording::What::Focus;
        change.isOn = isFocused;
        insertChange(change);
    }
    return isFocused;
}

Int64 InputRecorder::takeTicks(Int64) { return _beginTicks + _frameTicks; }
} // namespace OSG
