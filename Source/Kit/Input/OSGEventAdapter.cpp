#include "OSGEventAdapter.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <utility>

#include "OSGLog.h"
#include "OSGWalkFocusGuard.h"

namespace OSG
{
namespace
{
constexpr Int16 EscapeKey = 27; // as a virtual-key code and as a character
constexpr Int16 NoButton = -1;

bool can_be_held(Int16 button)
{
    return button >= NavigatorEvent::LeftButton && button <= NavigatorEvent::RightButton;
}

UInt8 bit_of(Int16 button) { return static_cast<UInt8>(1u << button); }

Int16 whole_pixel(Real64 pixel)
{
    constexpr Real64 Least = std::numeric_limits<Int16>::min();
    constexpr Real64 Most = std::numeric_limits<Int16>::max();
    return static_cast<Int16>(std::clamp(std::floor(pixel), Least, Most));
}
} // namespace

EventAdapter::EventAdapter(Navigator &navigator)
    : _navigator(navigator)
{
}

EventAdapter::~EventAdapter() = default;

void EventAdapter::setContentScale(Real64 scale)
{
    if(scale > 0 && std::isfinite(scale))
        _scale = scale;
    else
        OSG_LOG_WARNING("EventAdapter: a content scale of %g is refused\n", scale);
}

void EventAdapter::setTool(std::shared_ptr<PointerTool> tool)
{
    if(tool == _tool)
        return;
    bool const wasShared = _tool == nullptr || _tool->sharesDrag();
    cancelTool();
    if(wasShared)
        endNavigatorDrag();
    _tool = std::move(tool);
    tellObserver(ToolEvent::Kind::Chosen);
}

void EventAdapter::tellObserver(ToolEvent::Kind kind, UInt16 modifiers) const
{
    if(_toolObserver != nullptr)
        _toolObserver->observeTool({kind, _tool.get(), modifiers, pixelX(), pixelY()});
}

// --- where the pointer is ---

bool EventAdapter::moveTo(Real64 x, Real64 y)
{
    Real64 const deviceX = x * _scale;
    Real64 const deviceY = y * _scale;
    if(!std::isfinite(deviceX) || !std::isfinite(deviceY))
        return false;
    _x = deviceX;
    _y = deviceY;
    return true;
}

Pnt2f EventAdapter::getPointer() const { return Pnt2f(_x, _y); }
Int16 EventAdapter::pixelX() const { return whole_pixel(_x); }
Int16 EventAdapter::pixelY() const { return whole_pixel(_y); }

PointerTool::Event EventAdapter::toolEvent(UInt16 modifiers) const
{
    return {getPointer(), modifiers, static_cast<Real32>(_scale)};
}

bool EventAdapter::ownsDrag() const { return _isToolDrag && !_tool->sharesDrag(); }

// --- events ---

void EventAdapter::pointerMove(Real64 x, Real64 y, UInt16 modifiers)
{
    if((_isPointerTaken && !isDragging()) || !moveTo(x, y))
        return;
    if(_isToolDrag)
    {
        std::shared_ptr<PointerTool> const tool = _tool;
        tellObserver(ToolEvent::Kind::Drag, modifiers);
        tool->drag(toolEvent(modifiers));
    }
    _hasMotion = !ownsDrag();
}

void EventAdapter::buttonPress(Int16 button, Real64 x, Real64 y, UInt16 modifiers)
{
    // Toolkits lose releases: the tool's drag before has no result.
    if(button == NavigatorEvent::LeftButton && ownsDrag())
        cancelTool();
    // A drag keeps the pointer until it ends, so that no second one begins in the middle of it.
    if(_isPointerTaken || ownsDrag() || !moveTo(x, y))
        return;
    bool const isLeft = button == NavigatorEvent::LeftButton;
    if(isLeft && _tool != nullptr)
    {
        bool const isShared = _tool->sharesDrag();
        if(!isShared && _buttonsDown != 0)
            return;
        std::shared_ptr<PointerTool> const tool = _tool;
        _isToolDrag = true;
        _hasMotion = _hasMotion && isShared;
        tellObserver(ToolEvent::Kind::Press, modifiers);
        tool->press(toolEvent(modifiers));
        if(!isShared)
            return;
    }
    if(can_be_held(button))
        _buttonsDown |= bit_of(button);
    _hasMotion = false; // the press has the newest position
    _navigator.buttonPress(button, pixelX(), pixelY());
}

void EventAdapter::buttonRelease(Int16 button, Real64 x, Real64 y, UInt16 modifiers)
{
    bool const isTools = button == NavigatorEvent::LeftButton && _isToolDrag;
    bool const isNavigators =
        can_be_held(button) ? (_buttonsDown & bit_of(button)) != 0 : !_isPointerTaken;
    if(!isTools && !isNavigators)
        return;
    moveTo(x, y); // without a position the button comes up where the pointer was last
    if(isTools)
        tellObserver(ToolEvent::Kind::Release, modifiers);
    if(isNavigators)
    {
        // The last motion of a drag counts, unless the engine has heard of one in this frame.
        if(_hasMotion && can_be_held(button) && !_wasMotionSent)
            sendMotion();
        if(can_be_held(button))
            _buttonsDown &= static_cast<UInt8>(~bit_of(button));
        _navigator.buttonRelease(button, pixelX(), pixelY());
    }
    if(isTools)
    {
        std::shared_ptr<PointerTool> const tool = _tool; // its host may set another one
        _isToolDrag = false;
        tool->release(toolEvent(modifiers));
    }
}

void EventAdapter::wheel(Real64 steps, Real64 x, Real64 y)
{
    if(_isPointerTaken || ownsDrag() || !std::isfinite(steps) || !moveTo(x, y))
        return;
    Int32 const whole = _wheel.take(steps);
    Int16 const button = whole > 0 ? NavigatorEvent::WheelUp : NavigatorEvent::WheelDown;
    for(Int32 i = 0; i < std::abs(whole); ++i)
        _navigator.buttonPress(button, pixelX(), pixelY());
}

void EventAdapter::key(Int16 code, UInt16 navigatorModifiers)
{
    if(code == EscapeKey && (navigatorModifiers & NavigatorEvent::KeyUp) == 0)
    {
        bool const isShared = _tool == nullptr || _tool->sharesDrag();
        bool const wasBusy = cancelTool();
        endNavigatorDrag();
        if(wasBusy && !isShared)
            return;
    }
    if(!_isKeyboardTaken)
        _navigator.keyPressEx(code, navigatorModifiers, pixelX(), pixelY());
}

void EventAdapter::focusLost()
{
    cancelTool();
    endNavigatorDrag();
    _hasMotion = false;
    _wheel = WheelSteps();
    _navigator.killFocus();
}

bool EventAdapter::cancelTool()
{
    bool const wasToolDrag = std::exchange(_isToolDrag, false);
    bool const wasBusy = _tool != nullptr && _tool->isBusy();
    if(wasToolDrag || wasBusy)
        tellObserver(ToolEvent::Kind::Cancel);
    if(!wasBusy)
        return false;
    std::shared_ptr<PointerTool> const tool = _tool;
    tool->cancel();
    return true;
}

// The engine hears of a release that is no click.
void EventAdapter::endNavigatorDrag()
{
    bool const centers = _navigator.getClickCenter();
    _navigator.setClickCenter(false);
    for(Int16 button = NavigatorEvent::LeftButton; button <= NavigatorEvent::RightButton; ++button)
    {
        if((_buttonsDown & bit_of(button)) != 0)
            _navigator.buttonRelease(button, pixelX(), pixelY());
    }
    _buttonsDown = 0;
    _navigator.setClickCenter(centers);
}

// --- frames ---

void EventAdapter::frame()
{
    if(_guard != nullptr)
    {
        // Buttons are keys of a walk.
        bool const isPanels = _isKeyboardTaken || (_isPointerTaken && _buttonsDown == 0);
        _guard->setInputTaken(isPanels || ownsDrag());
        _guard->beforeFrame();
    }
    if(!ownsDrag())
    {
        askForPointer();
        sendMotionOrIdle();
    }
    _navigator.updateCameraTransformation();
}

void EventAdapter::askForPointer()
{
    Real64 x = 0;
    Real64 y = 0;
    if(!_pointerQuery || (_isPointerTaken && !isDragging()) || !_pointerQuery(x, y))
        return;
    Int16 const beforeX = pixelX();
    Int16 const beforeY = pixelY();
    if(moveTo(x, y))
        _hasMotion = _hasMotion || pixelX() != beforeX || pixelY() != beforeY;
}

void EventAdapter::sendMotion()
{
    _hasMotion = false;
    _wasMotionSent = true;
    if(_buttonsDown != 0)
        _navigator.moveTo(pixelX(), pixelY());
    else
        _navigator.mouseMove(pixelX(), pixelY());
}

void EventAdapter::sendMotionOrIdle()
{
    bool const isIdlesTurn = _isIdleDue && (_buttonsDown == 0 || _idlesInDrags);
    if(_hasMotion && !_wasMotionSent && !isIdlesTurn)
        sendMotion();
    bool const wasMotion = std::exchange(_wasMotionSent, false);
    _isIdleDue = wasMotion;
    if(wasMotion)
        return;
    Int16 held = NoButton;
    for(Int16 button = NavigatorEvent::RightButton; button >= NavigatorEvent::LeftButton; --button)
    {
        if((_buttonsDown & bit_of(button)) != 0)
            held = button;
    }
    _navigator.idle(held, pixelX(), pixelY());
}
} // namespace OSG
