#include "OSGWASDFlyEngine.h"

#include "OSGLog.h"
#include "OSGNavigator.h"

namespace OSG
{
WASDFlyEngine::WASDFlyEngine() = default;
WASDFlyEngine::~WASDFlyEngine() = default;

TransitPtr<WASDFlyEngine> WASDFlyEngine::create()
{
    void *const block = MemMalloc(sizeof(WASDFlyEngine));
    return TransitPtr<WASDFlyEngine>(block != nullptr ? new(block) WASDFlyEngine : nullptr);
}

// --- pose ---

Pnt3f const &WASDFlyEngine::getFrom() { return _pose.from(); }
Pnt3f const &WASDFlyEngine::getAt() { return _pose.at(); }
Vec3f const &WASDFlyEngine::getUp() { return _pose.up(); }

Matrix const &WASDFlyEngine::getMatrix()
{
    _pose.writeMatrix(_matrix);
    return _matrix;
}

Real32 WASDFlyEngine::getDistance() { return 0.f; }
void WASDFlyEngine::setFrom(Pnt3f from) { _pose.setFrom(from); }
void WASDFlyEngine::setAt(Pnt3f at) { _pose.setAt(at); }
void WASDFlyEngine::setUp(Vec3f up) { _pose.setUp(up); }

void WASDFlyEngine::set(Matrix const &matrix)
{
    EyePose const pose(matrix);
    set(pose.from(), pose.at(), pose.up());
}

void WASDFlyEngine::set(Pnt3f from, Pnt3f at, Vec3f up) { _pose.set(from, at, up); }
void WASDFlyEngine::setDistance(Real32 distance) { forward(distance); }

// --- motion ---

void WASDFlyEngine::rotate(Real32 deltaX, Real32 deltaY) { _pose.turn(-deltaX, -deltaY); }

Real32 WASDFlyEngine::forward(Real32 step)
{
    _pose.move(_pose.backward() * step);
    return 0.f;
}

Real32 WASDFlyEngine::right(Real32 step)
{
    _pose.move(_pose.left() * step);
    return 0.f;
}

// --- events ---

void WASDFlyEngine::buttonPress(Int16 button, Int16, Int16, Navigator *navigator)
{
    switch(button)
    {
    case NavigatorEvent::LeftButton:
        _state = Forwards;
        break;
    case NavigatorEvent::MiddleButton:
        _state = RotateOnly;
        break;
    case NavigatorEvent::RightButton:
        _state = Backwards;
        break;
    case NavigatorEvent::WheelUp:
        _state = NoFlight;
        forward(-navigator->getMotionFactor());
        break;
    case NavigatorEvent::WheelDown:
        _state = NoFlight;
        forward(navigator->getMotionFactor());
        break;
    default:
        OSG_LOG_NOTICE("WASDFlyEngine: buttonPress, unknown button\n");
    }
}

void WASDFlyEngine::buttonRelease(Int16, Int16, Int16, Navigator *) { _state = NoFlight; }

void WASDFlyEngine::keyPressEx(Int16 key, UInt16 modifiers, Int16, Int16, Navigator *navigator)
{
    if((modifiers & NavigatorEvent::KeyUp) != 0)
        return;
    switch(key)
    {
    case NavigatorEvent::LeftKey:
        right(navigator->getMotionFactor());
        break;
    case NavigatorEvent::RightKey:
        right(-navigator->getMotionFactor());
        break;
    case NavigatorEvent::ForwardKey:
        forward(-navigator->getMotionFactor());
        break;
    case NavigatorEvent::BackwardKey:
        forward(navigator->getMotionFactor());
        break;
    case NavigatorEvent::RotateLeftKey:
        rotate(-navigator->getRotationAngle(), 0.f);
        break;
    case NavigatorEvent::RotateRightKey:
        rotate(navigator->getRotationAngle(), 0.f);
        break;
    default:
        OSG_LOG_NOTICE("FlyEngine: keyPress, unknown key\n");
    }
}

void WASDFlyEngine::moveTo(Int16 x, Int16 y, Navigator *navigator)
{
    Real32 fromX, fromY, toX, toY;
    navigator->calcFromTo(x, y, fromX, fromY, toX, toY);
    rotate(toX - fromX, fromY - toY);
    if(_state == Forwards)
        forward(-navigator->getMotionFactor());
    else if(_state == Backwards)
        forward(navigator->getMotionFactor());
}

void WASDFlyEngine::idle(Int16, Int16, Int16, Navigator *) {}
void WASDFlyEngine::mouseMove(Int16, Int16, Navigator *) {}
void WASDFlyEngine::killFocus(Navigator *) {}
} // namespace OSG
