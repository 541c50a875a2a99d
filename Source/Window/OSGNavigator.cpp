#include "OSGNavigator.h"

#include <utility>

#include "OSGBeaconPose.h"

namespace OSG
{
Navigator::Navigator() = default;
Navigator::~Navigator() = default;

// --- viewport and engine ---

void Navigator::setViewport(Viewport *viewport)
{
    if(viewport == _viewport)
        return;
    _viewport = viewport;
    if(_engine != nullptr)
        _engine->onViewportChanged(this);
}

void Navigator::setEngine(NavigatorEngine *engine)
{
    if(engine == _engine)
        return;
    if(engine != nullptr && _engine != nullptr)
    {
        _engine->getMatrix(); // some engines update from, at and up only here
        engine->set(_engine->getFrom(), _engine->getAt(), _engine->getUp());
    }
    _engine = engine;
    _held = false;
    if(engine != nullptr)
        engine->onActivation(this);
}

// --- events ---

void Navigator::buttonPress(Int16 button, Int16 x, Int16 y)
{
    handle({NavigatorEvent::ButtonPress, button, 0, x, y});
}

void Navigator::buttonRelease(Int16 button, Int16 x, Int16 y)
{
    handle({NavigatorEvent::ButtonRelease, button, 0, x, y});
}

void Navigator::keyPress(Int16 key, Int16 x, Int16 y)
{
    process({NavigatorEvent::Key, key, 0, x, y}, KeyCall::Plain);
}

void Navigator::keyPressEx(Int16 key, UInt16 modifiers, Int16 x, Int16 y)
{
    handle({NavigatorEvent::Key, key, modifiers, x, y});
}

void Navigator::moveTo(Int16 x, Int16 y) { handle({NavigatorEvent::Move, 0, 0, x, y}); }
void Navigator::mouseMove(Int16 x, Int16 y) { handle({NavigatorEvent::Hover, 0, 0, x, y}); }

void Navigator::idle(Int16 button, Int16 x, Int16 y)
{
    handle({NavigatorEvent::Idle, button, 0, x, y});
}

void Navigator::killFocus() { handle({NavigatorEvent::KillFocus, 0, 0, _lastX, _lastY}); }

void Navigator::handle(NavigatorEvent const &event) { process(event, KeyCall::Extended); }

namespace
{
bool is_known_button(Int16 code)
{
    return code >= NavigatorEvent::LeftButton && code <= NavigatorEvent::WheelDown;
}

bool is_unknown_button(NavigatorEvent const &event)
{
    return (event.kind == NavigatorEvent::ButtonPress ||
            event.kind == NavigatorEvent::ButtonRelease) &&
           !is_known_button(event.code);
}

/// The bit of a button that can be held down. Steps of the wheel have none: they are never
/// released.
UInt8 held_bit(Int16 code)
{
    bool const canBeHeld =
        code >= NavigatorEvent::LeftButton && code <= NavigatorEvent::RightButton;
    return canBeHeld ? static_cast<UInt8>(1u << code) : UInt8(0);
}
} // namespace

void Navigator::process(NavigatorEvent const &event, KeyCall keyCall)
{
    if(_observer != nullptr)
        _observer->observe(event);
    // The engine may report an unknown button that goes down. Engines do not look at the code of a
    // release, so they would take this one for the end of the drag.
    bool const disturbsDrag = _buttonsDown != 0 && is_unknown_button(event);
    if(!disturbsDrag)
        trackButtons(event);
    if(isReady() && !(disturbsDrag && event.kind == NavigatorEvent::ButtonRelease))
    {
        bool const wasPassing = std::exchange(_isPassing, true);
        pass(event, keyCall);
        _isPassing = wasPassing;
        poseCamera();
    }
    if(!disturbsDrag)
        trackPointer(event);
}

bool Navigator::isReady() const
{
    return _engine != nullptr && _viewport != nullptr && _viewport->getRoot() != nullptr &&
           _viewport->getCamera() != nullptr;
}

void Navigator::pass(NavigatorEvent const &event, KeyCall keyCall)
{
    // The engine may call setEngine. This reference keeps it alive until it returns.
    UnrecordedRefPtr<NavigatorEngine> const engine = _engine;
    switch(event.kind)
    {
    case NavigatorEvent::ButtonPress:
        engine->buttonPress(event.code, event.x, event.y, this);
        break;
    case NavigatorEvent::ButtonRelease:
        engine->buttonRelease(event.code, event.x, event.y, this);
        break;
    case NavigatorEvent::Key:
        if(keyCall == KeyCall::Plain)
            engine->keyPress(event.code, event.x, event.y, this);
        else
            engine->keyPressEx(event.code, event.modifiers, event.x, event.y, this);
        break;
    case NavigatorEvent::Move:
        engine->moveTo(event.x, event.y, this);
        break;
    case NavigatorEvent::Hover:
        engine->mouseMove(event.x, event.y, this);
        break;
    case NavigatorEvent::Idle:
        engine->idle(event.code, event.x, event.y, this);
        break;
    case NavigatorEvent::KillFocus:
        engine->killFocus(this);
        break;
    }
}

void Navigator::trackButtons(NavigatorEvent const &event)
{
    if(event.kind == NavigatorEvent::ButtonPress && is_known_button(event.code))
    {
        _buttonsDown |= held_bit(event.code);
        _pressX = event.x;
        _pressY = event.y;
        _moved = false;
        _held = false; // an engine that wants to hold the position does so at every press
    }
    else if(event.kind == NavigatorEvent::ButtonRelease || event.kind == NavigatorEvent::Move)
        _moved = _moved || event.x != _pressX || event.y != _pressY;
    if(event.kind == NavigatorEvent::ButtonRelease)
        _buttonsDown &= static_cast<UInt8>(~held_bit(event.code));
}

void Navigator::trackPointer(NavigatorEvent const &event)
{
    bool const hasPointer =
        event.kind != NavigatorEvent::Idle && event.kind != NavigatorEvent::KillFocus;
    if(!hasPointer || _held)
        return;
    _lastX = event.x;
    _lastY = event.y;
}

void Navigator::setLastPosition(Int16 x, Int16 y)
{
    _lastX = x;
    _lastY = y;
    _held = true;
}

bool Navigator::calcFromTo(Int16 x, Int16 y, Real32 &fromX, Real32 &fromY, Real32 &toX,
                           Real32 &toY) const
{
    fromX = fromY = toX = toY = 0.f;
    return _viewport != nullptr &&
           _viewport->calcNormalizedCoordinates(fromX, fromY, _lastX, _lastY) &&
           _viewport->calcNormalizedCoordinates(toX, toY, x, y);
}

// --- the camera ---

void Navigator::updateCameraTransformation()
{
    if(_observer != nullptr && !_isPassing)
        _observer->observeFrame();
    if(_engine == nullptr)
        return;
    UnrecordedRefPtr<NavigatorEngine> const engine = _engine;
    poseCamera();
    engine->onUpdateCameraTransformation(this);
}

void Navigator::poseCamera()
{
    if(_engine == nullptr)
        return;
    Matrix const &pose = _engine->getMatrix();
    pose_beacon(_viewport != nullptr ? _viewport->getCamera() : nullptr, pose);
}
} // namespace OSG
