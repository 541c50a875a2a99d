#include "OSGInputReplay.h"

#include <utility>

#include "OSGBeaconPose.h"
#include "OSGWASDWalkEngine.h"

namespace OSG
{
InputReplay::InputReplay(InputRecording const &recording, Navigator &navigator, Host host)
    : _recording(recording)
    , _navigator(navigator)
    , _host(std::move(host))
    , _ownsDrag(_host.tool != nullptr && !_host.tool->sharesDrag())
{
    navigator.setMotionFactor(recording.motionFactor);
    navigator.setRotationAngle(recording.rotationAngle);
    navigator.setClickCenter(recording.clickCenter);
    navigator.setClickNoIntersect(recording.noIntersect);
    if(NavigatorEngine *const engine = navigator.getEngine())
        engine->set(recording.from, recording.at, recording.up);
    navigator.updateCameraTransformation();
}

InputReplay::InputReplay(InputRecording const &recording, Navigator &navigator)
    : InputReplay(recording, navigator, Host())
{
}

InputReplay::~InputReplay() = default;

std::optional<Real64> InputReplay::nextSeconds() const
{
    return isAtEnd() ? std::nullopt : std::optional(_recording.events[_position].seconds);
}

bool InputReplay::step()
{
    if(isAtEnd())
        return false;
    play(_recording.events[_position]);
    ++_position;
    return true;
}

void InputReplay::play(InputRecording::TimedEvent const &line)
{
    using What = InputRecording::What;
    switch(line.what)
    {
    case What::Event:
        playEvent(line.event);
        break;
    case What::Key:
        if(_host.desktop != nullptr)
            _host.desktop->setKey(line.code, line.isOn);
        break;
    case What::Focus:
        if(_host.desktop != nullptr)
            _host.desktop->setFocus(line.isOn ? _host.window : nullptr);
        break;
    case What::Frame:
        if(_host.desktop != nullptr)
            _host.desktop->setTicks(line.ticks);
        _navigator.updateCameraTransformation();
        break;
    case What::Tool:
        cancelTool();
        _ownsDrag = !line.isOn;
        _host.tool = _host.takeTool ? _host.takeTool(line.tool) : nullptr;
        break;
    case What::Held:
        _modifiers = static_cast<UInt16>(line.code);
        break;
    case What::Cancel:
        cancelTool();
        break;
    default:
        playChange(line);
    }
}

void InputReplay::playChange(InputRecording::TimedEvent const &line)
{
    using What = InputRecording::What;
    if(line.what == What::MotionFactor)
        _navigator.setMotionFactor(line.number);
    else if(line.what == What::RotationAngle)
        _navigator.setRotationAngle(line.number);
    else if(line.what == What::ClickCenter)
        _navigator.setClickCenter(line.isOn);
    else if(line.what == What::NoIntersect)
        _navigator.setClickNoIntersect(line.isOn);
    else if(line.what == What::Pose)
        set_pose(_navigator, line.pose.from, line.pose.at, line.pose.up);
    else if(auto *const walk = dynamic_cast<WASDWalkEngine *>(_navigator.getEngine()))
    {
        walk->setSilent(line.isOn);
        if(!line.isOn) // as WalkFocusGuard does, so that the next step counts from here
            walk->onUpdateCameraTransformation(&_navigator);
    }
}

// --- what an EventAdapter does with the events of a toolkit ---

void InputReplay::cancelTool()
{
    _isToolDown = false;
    if(_host.tool != nullptr && _host.tool->isBusy())
        _host.tool->cancel();
}

void InputReplay::playToolDrag(PointerTool &tool, NavigatorEvent const &event)
{
    PointerTool::Event const heard{Pnt2f(event.x, event.y), _modifiers, _recording.contentScale};
    if(event.kind == NavigatorEvent::ButtonPress)
        tool.press(heard);
    else if(event.kind == NavigatorEvent::Move)
        tool.drag(heard);
    else
        tool.release(heard);
}

void InputReplay::playEvent(NavigatorEvent const &event)
{
    bool const isLeft = event.code == NavigatorEvent::LeftButton;
    bool const isPress = event.kind == NavigatorEvent::ButtonPress && isLeft;
    bool const isRelease = event.kind == NavigatorEvent::ButtonRelease && isLeft;
    if(event.kind == NavigatorEvent::KillFocus || (isPress && _isToolDown))
        cancelTool();
    _isToolDown = _isToolDown || isPress;
    bool const isDrag = isPress || isRelease || event.kind == NavigatorEvent::Move;
    bool const isTools = isDrag && _isToolDown;
    bool const isNavigators = !isTools || !_ownsDrag;
    if(isRelease)
        _isToolDown = false;
    std::shared_ptr<PointerTool> const tool = isTools ? _host.tool : nullptr;
    // A tool hears of a release when the navigator is through with it.
    if(tool != nullptr && !isRelease)
        playToolDrag(*tool, event);
    if(isNavigators)
        _navigator.handle(event);
    if(tool != nullptr && isRelease)
        playToolDrag(*tool, event);
}

void set_pose(Navigator &navigator, Pnt3f const &from, Pnt3f const &at, Vec3f const &up)
{
    NavigatorEngine *const engine = navigator.getEngine();
    if(engine == nullptr)
        return;
    engine->set(from, at, up);
    Viewport const *const viewport = navigator.getViewport();
    pose_beacon(viewport != nullptr ? viewport->getCamera() : nullptr, engine->getMatrix());
}

WindowView view_of(InputRecording const &recording, UInt32 width, UInt32 height)
{
    WindowView view{recording.from, recording.at, recording.up, 45, width, height};
    if(recording.projection == InputRecording::Projection::Orthographic)
        view.orthographicHeight = static_cast<Real32>(recording.opening);
    else
        view.fieldOfView = static_cast<Real32>(recording.opening);
    return view;
}
} // namespace OSG
