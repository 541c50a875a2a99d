// How a walk takes events, keys and the time: input and modes of WASDWalkEngine.

#include <cmath>

#include "OSGLog.h"
#include "OSGNavigator.h"
#include "OSGPerspectiveCamera.h"
#include "OSGWASDWalkEngine.h"
#include "OSGWIN32Window.h"

namespace OSG
{
// --- the navigator of the last event ---

Viewport *WASDWalkEngine::viewport() const
{
    return _navigator != nullptr ? _navigator->getViewport() : nullptr;
}

WIN32Window *WASDWalkEngine::window() const
{
    Viewport const *const view = viewport();
    return view != nullptr ? dynamic_cast<WIN32Window *>(view->getParent()) : nullptr;
}

NativeWindow WASDWalkEngine::nativeWindow() const
{
    WIN32Window const *const parent = window();
    return parent != nullptr ? parent->getHwnd() : nullptr;
}

void WASDWalkEngine::note(Int16 x, Int16 y, Navigator *navigator)
{
    _lastX = x;
    _lastY = y;
    _navigator = navigator;
}

bool WASDWalkEngine::check_focus()
{
    if(window() == nullptr)
        return false;
    char const *const missing = _desktop->missing();
    if(missing != nullptr && !_missingReported)
    {
        _missingReported = true;
        OSG_LOG_WARNING("WASDWalkEngine: the desktop does not serve everything: %s\n", missing);
    }
    NativeWindow const native = nativeWindow();
    if(!_desktop->isFocused(native))
        return false;
    _pointer.keepCapture(native);
    return true;
}

// --- the pointer ---

void WASDWalkEngine::center_cursor(Int16 x, Int16 y)
{
    Viewport const *const view = viewport();
    if(view == nullptr)
        return;
    bool const isInside =
        x >= 0 && y >= 0 && view->calcPixelWidth() - x >= 0 && view->calcPixelHeight() - y >= 0;
    if(isInside || window() == nullptr)
        return;
    // The look begins anew in the middle, so that the wrap is no turn.
    Desktop::Point const middle = _pointer.center(nativeWindow());
    _prevX = _lastX = static_cast<Int16>(middle.x);
    _prevY = _lastY = static_cast<Int16>(middle.y);
}

void WASDWalkEngine::disable_cursor() { _pointer.hide(nativeWindow()); }
void WASDWalkEngine::enable_cursor() { _pointer.show(); }

bool WASDWalkEngine::calcFromTo(Int16 x, Int16 y, Real32 &fromX, Real32 &fromY, Real32 &toX,
                                Real32 &toY)
{
    Viewport const *const view = viewport();
    if(view == nullptr || view->calcPixelWidth() < 1 || view->calcPixelHeight() < 1)
        return false;
    return view->calcNormalizedCoordinates(fromX, fromY, _prevX, _prevY) &&
           view->calcNormalizedCoordinates(toX, toY, x, y);
}

void WASDWalkEngine::rotate_move(Real32, Int16 x, Int16 y)
{
    Real32 fromX, fromY, toX, toY;
    // One radian for half the size of the view. y runs upwards, a positive pitch turns down.
    if(calcFromTo(x, y, fromX, fromY, toX, toY))
        rotate(toX - fromX, fromY - toY);
    _prevX = x;
    _prevY = y;
}

// --- pointer events ---

void WASDWalkEngine::buttonPress(Int16 button, Int16 x, Int16 y, Navigator *navigator)
{
    if(_silent)
        return;
    note(x, y, navigator);
    if(button == NavigatorEvent::WheelUp || button == NavigatorEvent::WheelDown)
        turnWheel(button == NavigatorEvent::WheelDown);
}

// The keys may have changed since the last frame, so they are asked now.
void WASDWalkEngine::turnWheel(bool increases)
{
    WalkSettings &s = _settings;
    if(_desktop->isDown(WalkKeys::Ctrl))
        s.setFieldOfView(increases ? s.cameraFieldOfView * WalkSettings::FieldOfViewFactor
                                   : s.cameraFieldOfView / WalkSettings::FieldOfViewFactor);
    else if(_desktop->isDown(WalkKeys::Shift))
        s.rotFactor = increases ? increased_factor(s.rotFactor, s.rotMultiplier, s.rotMaxFactor)
                                : decreased_factor(s.rotFactor, s.rotMultiplier);
    else
        s.motionFactor =
            increases ? increased_factor(s.motionFactor, s.motionMultiplier, s.motionMaxFactor)
                      : decreased_factor(s.motionFactor, s.motionMultiplier);
}

void WASDWalkEngine::buttonRelease(Int16, Int16 x, Int16 y, Navigator *navigator)
{
    if(!_silent)
        note(x, y, navigator);
}

void WASDWalkEngine::moveTo(Int16 x, Int16 y, Navigator *navigator)
{
    if(!_silent)
        note(x, y, navigator);
}

void WASDWalkEngine::mouseMove(Int16 x, Int16 y, Navigator *navigator)
{
    if(_silent)
        return;
    note(x, y, navigator);
    if(!_settings.walkConsole)
        center_cursor(x, y);
}

void WASDWalkEngine::idle(Int16, Int16 x, Int16 y, Navigator *navigator)
{
    if(_silent || !check_focus())
        return;
    note(x, y, navigator);
    bool const looks = _keyMoved || (_settings.rotateOnIdle && !_settings.walkConsole);
    if(looks)
    {
        rotate_move(0.f, x, y);
    }
    else
    {
        _prevX = x;
        _prevY = y;
    }
    if(!_settings.walkConsole)
        center_cursor(x, y);
}

// --- keys of the settings ---

void WASDWalkEngine::keyPress(Int16 key, Int16 x, Int16 y, Navigator *navigator)
{
    keyPressEx(key, 0, x, y, navigator);
}

void WASDWalkEngine::keyPressEx(Int16 key, UInt16 modifiers, Int16 x, Int16 y, Navigator *navigator)
{
    if(_silent || !check_focus())
        return;
    note(x, y, navigator);
    auto const option = _optionKeys.find(key);
    if(option == _optionKeys.end() || (modifiers & NavigatorEvent::KeyDown) == 0)
        return;
    if((modifiers & NavigatorEvent::VirtualKey) != 0)
        pressVirtualKey(option->second.code);
    else
        pressCharacter(option->second.code);
}

void WASDWalkEngine::pressVirtualKey(Int16 logicalKey)
{
    switch(logicalKey)
    {
    case WalkKeys::Escape:
        enterConsoleMode();
        break;
    case WalkKeys::Space:
        _settings.staircaseMode = false;
        break;
    case WalkKeys::F2:
        _settings.rotateOnIdle = false;
        _settings.walkConsole = !_settings.walkConsole;
        if(_settings.walkConsole)
            enable_cursor();
        else
            disable_cursor();
        break;
    case WalkKeys::F3:
        setGameMode();
        break;
    case WalkKeys::F7:
        setFieldOfView(_settings.cameraFieldOfView / WalkSettings::FieldOfViewFactor);
        break;
    case WalkKeys::F8:
        setFieldOfView(_settings.cameraFieldOfView * WalkSettings::FieldOfViewFactor);
        break;
    default:
        break;
    }
}

void WASDWalkEngine::pressCharacter(Int16 logicalKey)
{
    WalkSettings &s = _settings;
    switch(logicalKey)
    {
    case WalkKeys::Star:
        setRotationFactor(getRotationFactor() + s.rotDelta);
        break;
    case WalkKeys::Underscore:
        setRotationFactor(getRotationFactor() - s.rotDelta);
        break;
    case WalkKeys::Plus:
        setMotionFactor(getMotionFactor() + s.motionDelta);
        break;
    case WalkKeys::Minus:
        setMotionFactor(getMotionFactor() - s.motionDelta);
        break;
    case WalkKeys::Digit1:
        s.walkMode = !s.walkMode;
        break;
    case WalkKeys::Digit2:
        s.godMode = !s.godMode;
        break;
    case WalkKeys::Digit5:
        s.outOfCameraConsole = !s.outOfCameraConsole;
        break;
    case WalkKeys::Digit6:
        s.godPerspectiveConsole = !s.godPerspectiveConsole;
        break;
    default:
        break;
    }
}

// --- modes ---

void WASDWalkEngine::enterConsoleMode()
{
    _settings.walkConsole = true;
    _settings.rotateOnIdle = false;
    enable_cursor();
}

void WASDWalkEngine::setGameMode()
{
    if(!_settings.walkConsole)
    {
        enterConsoleMode();
        return;
    }
    _settings.walkConsole = false;
    _settings.rotateOnIdle = true;
    disable_cursor();
}

void WASDWalkEngine::killFocus(Navigator *) { enterConsoleMode(); }

// --- frames ---

void WASDWalkEngine::onViewportChanged(Navigator *navigator)
{
    Viewport const *const view = navigator != nullptr ? navigator->getViewport() : nullptr;
    setWorld(view != nullptr ? view->getRoot() : nullptr);
}

void WASDWalkEngine::onUpdateCameraTransformation(Navigator *navigator)
{
    NavigatorEngine::onUpdateCameraTransformation(navigator);
    evaluate();
    if(navigator != nullptr)
        followFieldOfView(*navigator);
}

// An angle of view that equals what stands is not written again: the way to degrees and back
// rounds, so that the difference may stay, and every write invalidates what depends on the camera.
void WASDWalkEngine::followFieldOfView(Navigator const &navigator) const
{
    constexpr Real32 Tolerance = 1e-6f; // degrees
    Viewport *const view = navigator.getViewport();
    auto *const camera =
        view != nullptr ? dynamic_cast<PerspectiveCamera *>(view->getCamera()) : nullptr;
    if(camera == nullptr)
        return;
    Real32 const degrees = camera->getFov() / 6.2831855f * 360.f;
    if(!(std::abs(degrees - _settings.cameraFieldOfView) > Tolerance))
        return;
    Real32 const radians = _settings.cameraFieldOfView / 360.f * 2.f * 3.1415927f;
    if(std::isfinite(radians) && radians != camera->getFov())
        camera->setFov(radians);
}

void WASDWalkEngine::refresh_keyboard_data(std::map<Int16, key_data> &keys)
{
    WalkKeys::poll(keys, *_desktop);
}

Real32 WASDWalkEngine::millisecondsUntil(Int64 ticks) const
{
    constexpr Real32 StepsOfSystemTime = 10000.f; // of 100 nanoseconds in a millisecond
    auto const passed = static_cast<Real32>(ticks - _lastTime);
    if(_ticksPerSecond <= 0)
        return passed / StepsOfSystemTime;
    return static_cast<Real32>(Real64(passed) * 1000. / Real64(_ticksPerSecond));
}

void WASDWalkEngine::evaluate()
{
    // Without the focus no time stamp is taken: the next step counts all the time until then.
    if(_silent || !check_focus())
        return;
    refresh_keyboard_data(_motionKeys);
    refresh_keyboard_data(_optionKeys);
    Int64 const now = _desktop->getTicks();
    bool isAnyPressed = false;
    for(auto const &[polled, key] : _motionKeys)
    {
        if(!key.pressed)
            continue;
        isAnyPressed = true;
        moveByKey(key.code, millisecondsUntil(now));
    }
    if(!isAnyPressed)
    {
        _keyMoved = false;
        if(_settings.walkConsole)
            enable_cursor();
    }
    _lastTime = _desktop->getTicks();
}

void WASDWalkEngine::moveByKey(Int16 logicalKey, Real32 milliseconds)
{
    auto const moveUnit = static_cast<Real32>(_navigator->getMotionFactor() * 0.001 * 10.);
    auto const turnUnit = static_cast<Real32>(_navigator->getRotationAngle() * 0.001 * 20.);
    Real32 step = milliseconds * moveUnit * _settings.motionFactor;
    Real32 turn = milliseconds * turnUnit * _settings.rotFactor;
    if(WalkKeys::is_pressed(_optionKeys, WalkKeys::Shift))
    {
        step *= _settings.fastMotionFactor;
        turn *= _settings.fastRotFactor;
    }
    else if(WalkKeys::is_pressed(_optionKeys, WalkKeys::Ctrl))
    {
        step *= _settings.slowMotionFactor;
        turn *= _settings.slowRotFactor;
    }
    _keyMoved = true;
    if(_settings.walkConsole)
        disable_cursor();
    switch(logicalKey)
    {
    case WalkKeys::Forward:
        view_dir_move(-step, _lastX, _lastY);
        break;
    case WalkKeys::Backward:
        view_dir_move(step, _lastX, _lastY);
        break;
    case WalkKeys::StepLeft:
        horizontal_move(step, _lastX, _lastY);
        break;
    case WalkKeys::StepRight:
        horizontal_move(-step, _lastX, _lastY);
        break;
    case WalkKeys::Up:
        vertical_move(step, _lastX, _lastY);
        break;
    case WalkKeys::Down:
        vertical_move(-step, _lastX, _lastY);
        break;
    case WalkKeys::TurnLeft:
        rotate(-turn, 0.f);
        break;
    case WalkKeys::TurnRight:
        rotate(turn, 0.f);
        break;
    case WalkKeys::Level:
        rotate_horizont(turn);
        break;
    default:
        break;
    }
}
} // namespace OSG
