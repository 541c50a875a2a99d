#include "OSGInputRecorder.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "OSGInputPlayer.h"
#include "OSGNavigator.h"
#include "OSGOrthographicCamera.h"
#include "OSGPerspectiveCamera.h"
#include "OSGRecordingWords.h"
#include "OSGWASDWalkEngine.h"

namespace OSG
{
InputRecorder::InputRecorder(Navigator &navigator, Clock clock,
                             std::shared_ptr<WatchedDesktop> desktop, EventAdapter *adapter)
    : _navigator(navigator)
    , _clock(std::move(clock))
    , _begin(_clock())
    , _desktop(std::move(desktop))
    , _adapter(adapter)
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
    _settings = settings();
    _settings.isSilent = false; // as in a new engine
    _recording.motionFactor = _settings.motionFactor;
    _recording.rotationAngle = _settings.rotationAngle;
    _recording.clickCenter = _settings.clickCenter;
    _recording.noIntersect = _settings.noIntersect;
    navigator.setEventObserver(this);
    beginWithTools();
}

InputRecorder::~InputRecorder()
{
    // Another observer, such as a newer recorder, may have been set since.
    if(_navigator.getEventObserver() == this)
        _navigator.setEventObserver(nullptr);
    if(_desktop != nullptr && _desktop->getWatcher() == this)
        _desktop->setWatcher(nullptr);
    if(_adapter != nullptr && _adapter->getToolObserver() == this)
        _adapter->setToolObserver(nullptr);
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

// Engines round what they are given; a replay gives it to them as well.
InputRecording::Viewpoint InputRecorder::roundPose()
{
    CameraPose const pose = pose_of(*_navigator.getEngine());
    set_pose(_navigator, pose.from, pose.at, pose.up);
    return {pose.from, pose.at, pose.up};
}

void InputRecorder::takePose()
{
    InputRecording::Viewpoint const pose = roundPose();
    _recording.from = pose.from;
    _recording.at = pose.at;
    _recording.up = pose.up;
    _navigator.updateCameraTransformation(); // as a replay does when it begins
}

void InputRecorder::takePoseOfHost()
{
    takeSettings();
    InputRecording::Viewpoint const pose = roundPose();
    add(InputRecording::What::Pose);
    _recording.events.back().pose = pose;
}

// --- what the host changes ---

InputRecorder::Settings InputRecorder::settings() const
{
    auto const *const walk = dynamic_cast<WASDWalkEngine const *>(_navigator.getEngine());
    return {_navigator.getMotionFactor(), _navigator.getRotationAngle(),
            _navigator.getClickCenter(), _navigator.getClickNoIntersect(),
            walk != nullptr && walk->isSilent()};
}

void InputRecorder::takeNumber(InputRecording::What what, Real32 before, Real32 now)
{
    if(now == before || !std::isfinite(now))
        return;
    add(what);
    _recording.events.back().number = now;
}

void InputRecorder::takeTruth(InputRecording::What what, bool before, bool now)
{
    if(now == before)
        return;
    add(what);
    _recording.events.back().isOn = now;
}

void InputRecorder::takeSettings()
{
    using What = InputRecording::What;
    Settings const now = settings();
    Settings const before = std::exchange(_settings, now);
    takeNumber(What::MotionFactor, before.motionFactor, now.motionFactor);
    takeNumber(What::RotationAngle, before.rotationAngle, now.rotationAngle);
    takeTruth(What::ClickCenter, before.clickCenter, now.clickCenter);
    takeTruth(What::NoIntersect, before.noIntersect, now.noIntersect);
    takeTruth(What::Silent, before.isSilent, now.isSilent);
}

// --- what the navigator hears ---

void InputRecorder::observe(NavigatorEvent const &event)
{
    takeSettings();
    add(event);
}

void InputRecorder::add(NavigatorEvent const &event)
{
    _recording.events.push_back({_clock() - _begin, event});
}

void InputRecorder::observeFrame()
{
    if(_desktop == nullptr)
        return;
    takeSettings();
    _frameTicks = _desktop->getTrueDesktop().getTicks() - _beginTicks;
    InputRecording::TimedEvent frame{_clock() - _begin};
    frame.what = InputRecording::What::Frame;
    frame.ticks = _frameTicks;
    _recording.events.push_back(frame);
}

// --- what tools hear ---

// A recording without tools is one of the older versions of the format.
void InputRecorder::beginWithTools()
{
    if(_adapter == nullptr)
        return;
    _adapter->setToolObserver(this);
    if(_adapter->getTool() != nullptr)
        takeTool(_adapter->getTool());
}

void InputRecorder::add(InputRecording::What what, Int16 code)
{
    InputRecording::TimedEvent line{_clock() - _begin};
    line.what = what;
    line.code = code;
    _recording.events.push_back(line);
}

// A host may give its tools names that the format does not have, or that mean something else.
void InputRecorder::takeTool(PointerTool const *tool)
{
    bool const isShared = tool == nullptr || tool->sharesDrag();
    std::string name = tool != nullptr ? tool->getName() : "none";
    if(!is_tool_name(name) || (!isShared && is_shared_by_name(name)))
        name = "tool";
    _recording.contentScale = static_cast<Real32>(_adapter->getContentScale());
    add(InputRecording::What::Tool);
    _recording.events.back().tool = name;
    _recording.events.back().isOn = isShared;
}

void InputRecorder::observeTool(ToolEvent const &event)
{
    using Kind = ToolEvent::Kind;
    if(event.kind == Kind::Chosen)
        takeTool(event.tool);
    else if(event.kind == Kind::Cancel)
        add(InputRecording::What::Cancel);
    else
        takeDrag(event);
}

// What is left of a drag that had begun before the recording means nothing.
void InputRecorder::takeDrag(ToolEvent const &event)
{
    using Kind = ToolEvent::Kind;
    bool const wasDown = std::exchange(_isToolDown, event.kind != Kind::Release);
    if(!wasDown && event.kind != Kind::Press)
    {
        _isToolDown = false;
        return;
    }
    if(std::exchange(_held, event.modifiers) != event.modifiers)
        add(InputRecording::What::Held, static_cast<Int16>(event.modifiers));
    if(event.tool->sharesDrag()) // the navigator is told the same
        return;
    NavigatorEvent drag{NavigatorEvent::Move, NavigatorEvent::LeftButton, 0, event.x, event.y};
    if(event.kind == Kind::Press)
        drag.kind = NavigatorEvent::ButtonPress;
    if(event.kind == Kind::Release)
        drag.kind = NavigatorEvent::ButtonRelease;
    add(drag);
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
