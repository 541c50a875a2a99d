#include "OSGNavigator.h"

#include "OSGTransform.h"

namespace OSG
{
Navigator::Navigator() = default;
Navigator::~Navigator() = default;

// --- what it serves ---

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
        _engine->getMatrix(); // some engines bring the points up to date here alone
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

void Navigator::keyPress(Int16 key, Int16 x, Int16 y) { keyPressEx(key, 0, x, y); }

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

namespace
{
bool is_known_button(Int16 code)
{
    return code >= NavigatorEvent::LeftButton && code <= NavigatorEvent::WheelDown;
}
} // namespace

void Navigator::handle(NavigatorEvent const &event)
{
    if(_observer != nullptr)
        _observer->observe(event);
    if(event.kind == NavigatorEvent::ButtonPress)
    {
        _pressX = event.x;
        _pressY = event.y;
        _moved = false;
        // No engine answers another button, and so none would hold the position again.
        if(is_known_button(event.code))
            _held = false;
    }
    else if(event.kind == NavigatorEvent::ButtonRelease || event.kind == NavigatorEvent::Move)
        _moved = _moved || event.x != _pressX || event.y != _pressY;
    if(isReady())
    {
        pass(event);
        poseCamera();
    }
    trackPointer(event);
}

bool Navigator::isReady() const
{
    return _engine != nullptr && _viewport != nullptr && _viewport->getRoot() != nullptr &&
           _viewport->getCamera() != nullptr;
}

void Navigator::pass(NavigatorEvent const &event)
{
    // An engine may have the navigator take another one.
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
    Camera *const camera = _viewport != nullptr ? _viewport->getCamera() : nullptr;
    Node *const beacon = camera != nullptr ? camera->getBeacon() : nullptr;
    auto *const transform =
        beacon != nullptr ? dynamic_cast<Transform *>(beacon->getCore()) : nullptr;
    if(transform == nullptr)
        return;
    Matrix local = pose;
    Matrix const above =
        beacon->getParent() != nullptr ? beacon->getParent()->getToWorld() : Matrix();
    if(!(above == Matrix()))
    {
        Matrix below;
        if(!below.invertFrom(above))
            return;
        local = below * pose;
    }
    if(!(local == transform->getMatrix()))
        transform->setMatrix(local);
}
} // namespace OSG
