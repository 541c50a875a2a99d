#include "OSGCopterFlyEngine.h"

#include <optional>

#include <boost/bind/bind.hpp>

#include "OSGGeometry.h"
#include "OSGMatrixUtility.h"
#include "OSGNavigator.h"
#include "OSGTraverse.h"
#include "OSGWindow.h"

namespace OSG
{
using namespace NavigationMath;

CopterFlyEngine::CopterFlyEngine(Real32 radius)
    : _radius(radius)
{
}

CopterFlyEngine::~CopterFlyEngine() = default;

TransitPtr<CopterFlyEngine> CopterFlyEngine::create()
{
    void *const block = MemMalloc(sizeof(CopterFlyEngine));
    return TransitPtr<CopterFlyEngine>(block != nullptr ? new(block) CopterFlyEngine(0.8f)
                                                        : nullptr);
}

// --- pose ---

Pnt3f const &CopterFlyEngine::getFrom() { return _pose.from(); }
Pnt3f const &CopterFlyEngine::getAt() { return _pose.at(); }
Vec3f const &CopterFlyEngine::getUp() { return _pose.up(); }

Matrix const &CopterFlyEngine::getMatrix()
{
    _pose.writeMatrix(_matrix);
    return _matrix;
}

Real32 CopterFlyEngine::getDistance() { return 0.f; }
void CopterFlyEngine::setFrom(Pnt3f from) { _pose.setFrom(from); }
void CopterFlyEngine::setAt(Pnt3f at) { _pose.setAt(at); }
void CopterFlyEngine::setUp(Vec3f up) { _pose.setUp(up); }

void CopterFlyEngine::set(Matrix const &matrix)
{
    EyePose const pose(matrix);
    set(pose.from(), pose.at(), pose.up());
}

void CopterFlyEngine::set(Pnt3f from, Pnt3f at, Vec3f up) { _pose.set(from, at, up); }
void CopterFlyEngine::setDistance(Real32 distance) { translate_forward(distance); }

// --- flight ---

void CopterFlyEngine::setState(State state)
{
    if(state == _copter_state)
        return;
    _copter_state = state;
    _idle_flag = true;
}

namespace
{
void take_percent(Real32 &factor, Real32 percent, Real32 maximum)
{
    Real32 const value = std::abs(percent) * maximum / 100.f;
    if(maximum >= value)
        factor = value;
}
} // namespace

void CopterFlyEngine::setMotionFactor(Real32 percent)
{
    take_percent(_motion_factor, percent, _motion_max_factor);
}

void CopterFlyEngine::setRotationFactor(Real32 percent)
{
    take_percent(_rot_factor, percent, _rot_max_factor);
}

Real32 CopterFlyEngine::backwards() const
{
    switch(_dir_mode)
    {
    case ForwardDir:
        return -1.f;
    case BackwardDir:
        return 1.f;
    default:
        return 0.f;
    }
}

void CopterFlyEngine::rotate(Real32 yaw, Real32 pitch, Real32 roll)
{
    _pose.turn(-yaw, -pitch, -roll);
}

Real32 CopterFlyEngine::translate_forward(Real32 step)
{
    _pose.move(_pose.backward() * step);
    return 0.f;
}

Real32 CopterFlyEngine::translate_right(Real32 step)
{
    _pose.move(_pose.left() * step);
    return 0.f;
}

Real32 CopterFlyEngine::translate_up(Real32 step)
{
    _pose.move(_pose.upward() * step);
    return 0.f;
}

Real32 CopterFlyEngine::projectToSphere(Real32 radius, Real32 x, Real32 y)
{
    return project_to_sphere(radius, x, y);
}

// --- the pointer ---

namespace
{
struct Pixel
{
    Int16 x, y;
};

/// Nothing in a view without pixels.
std::optional<Pixel> middle_of(Viewport const *viewport)
{
    if(viewport == nullptr)
        return std::nullopt;
    Int16 const width = static_cast<Int16>(viewport->calcPixelWidth());
    Int16 const height = static_cast<Int16>(viewport->calcPixelHeight());
    if(width < 1 || height < 1)
        return std::nullopt;
    Window const *const window = viewport->getParent();
    Int16 const rows = window != nullptr ? static_cast<Int16>(window->getHeight()) : height;
    return Pixel{static_cast<Int16>(width / 2 + viewport->calcPixelLeft()),
                 static_cast<Int16>(rows - height / 2 - viewport->calcPixelBottom())};
}
} // namespace

void CopterFlyEngine::init_cursor_pos(Navigator *navigator)
{
    if(std::optional<Pixel> const middle = middle_of(navigator->getViewport()))
        navigator->setLastPosition(middle->x, middle->y);
}

std::pair<Real32, Real32> CopterFlyEngine::qualify_cursor_pos(Int16 x, Int16 y,
                                                              Navigator *navigator)
{
    std::optional<Pixel> const middle = middle_of(navigator->getViewport());
    if(!middle)
        return {0.f, 0.f};
    // By the middle's place in the window, not by half the size of the view.
    Real32 const divisorX = middle->x;
    Real32 const divisorY = middle->y;
    return {static_cast<Real32>(x - middle->x) / divisorX,
            static_cast<Real32>(y - middle->y) / divisorY};
}

// --- ticks ---

void CopterFlyEngine::copter_move_to(Int16 x, Int16 y, Navigator *navigator)
{
    Real32 fromX, fromY, toX, toY;
    navigator->calcFromTo(x, y, fromX, fromY, toX, toY);
    rotate((toX - fromX) / _rot_divider * _motion_factor,
           (fromY - toY) / _rot_divider * _motion_factor, 0.f);
    translate_forward(backwards() * (navigator->getMotionFactor() * _motion_factor));
}

void CopterFlyEngine::copter_rotate(Int16 x, Int16 y, Navigator *navigator)
{
    auto const [deflectionX, deflectionY] = qualify_cursor_pos(x, y, navigator);
    Real32 const angle = navigator->getRotationAngle();
    bool const vertical = std::abs(deflectionY) > std::abs(deflectionX);
    switch(_move_mode)
    {
    case RadialMode:
    {
        Real32 const whole =
            std::sqrt(deflectionX * deflectionX + deflectionY * deflectionY) * _rot_factor;
        if(backwards() != 0.f)
            rotate(0.f, 0.f, backwards() * (angle * whole));
        return;
    }
    case DominantAxisMode:
        if(vertical)
            rotate(0.f, angle * (deflectionY * _rot_factor), 0.f);
        else
            rotate(angle * (deflectionX * _rot_factor), 0.f, 0.f);
        return;
    case VerticalMode:
        rotate(0.f, angle * (deflectionY * _rot_factor), 0.f);
        return;
    case HorizontalMode:
        rotate(angle * (deflectionX * _rot_factor), 0.f, 0.f);
        return;
    }
}

void CopterFlyEngine::copter_translate(Int16 x, Int16 y, Navigator *navigator)
{
    auto const [deflectionX, deflectionY] = qualify_cursor_pos(x, y, navigator);
    Real32 const step = navigator->getMotionFactor();
    bool const vertical = std::abs(deflectionY) > std::abs(deflectionX);
    switch(_move_mode)
    {
    case RadialMode:
    {
        Real32 const whole =
            std::sqrt(deflectionX * deflectionX + deflectionY * deflectionY) * _motion_factor;
        translate_forward(backwards() * (step * whole));
        return;
    }
    case DominantAxisMode:
        if(vertical)
            translate_up(-(step * (deflectionY * _motion_factor)));
        else
            translate_right(-(step * (deflectionX * _motion_factor)));
        return;
    case VerticalMode:
        translate_up(-(step * (deflectionY * _motion_factor)));
        return;
    case HorizontalMode:
        translate_right(-(step * (deflectionX * _motion_factor)));
        return;
    }
}

namespace
{
/// Collects the boxes of the geometry that a frustum meets.
struct calc_volume_helper
{
    ActionBase::ResultE enter(Node *node)
    {
        if(node->getTravMask() == 0)
            return ActionBase::Skip;
        if(dynamic_cast<Geometry *>(node->getCore()) == nullptr)
            return ActionBase::Continue;
        BoxVolume box = node->getVolume();
        node->getWorldVolume(box);
        if(box.intersect(frustum))
            extend(result, box);
        return ActionBase::Continue;
    }

    FrustumVolume frustum;
    BoxVolume result;
};
} // namespace

BoxVolume CopterFlyEngine::calc_box_volume(Navigator *navigator)
{
    calc_volume_helper seen;
    seen.result.setEmpty(true);
    Viewport *const viewport = navigator->getViewport();
    if(viewport == nullptr || viewport->getRoot() == nullptr || viewport->getCamera() == nullptr)
        return seen.result;
    viewport->getCamera()->getFrustum(seen.frustum, static_cast<UInt32>(viewport->calcPixelWidth()),
                                      static_cast<UInt32>(viewport->calcPixelHeight()));
    viewport->getRoot()->updateVolume();
    traverse(viewport->getRoot(),
             boost::bind(&calc_volume_helper::enter, &seen, boost::placeholders::_1));
    return seen.result;
}

void CopterFlyEngine::copter_move_on_sphere(Int16 x, Int16 y, Navigator *navigator)
{
    Real32 fromX, fromY, toX, toY;
    navigator->calcFromTo(x, y, fromX, fromY, toX, toY);
    std::optional<Turn> const turn = drag_on_sphere(_radius, fromX, fromY, toX, toY);
    if(!turn)
        return;
    BoxVolume const box = calc_box_volume(navigator);
    if(box.isEmpty())
        return;
    Pnt3f center;
    box.getCenter(center);
    Pnt3f const at = _pose.at();
    Pnt3f const pivot(at[0] + (center[0] - at[0]) / 10.f, at[1] + (center[1] - at[1]) / 10.f,
                      at[2] + (center[2] - at[2]) / 10.f);
    Matrix orbit;
    if(MatrixLookAt(orbit, pivot, pivot + (pivot - _pose.from()), _pose.up()))
        return;
    Real32 const distance = (pivot - _pose.from()).length();
    orbit.mult(rotation_about(turn->axis, turn->angle * _rot_factor / 20.f));
    Matrix back;
    back.setTranslate(0.f, 0.f, distance);
    Matrix const camera = orbit * back;
    Pnt3f const from = position_of(camera);
    _pose.set(from, from - axis_of(camera, 2) * distance, axis_of(camera, 1));
}

void CopterFlyEngine::idle(Int16, Int16 x, Int16 y, Navigator *navigator)
{
    if(_idle_flag)
        return;
    switch(_copter_state)
    {
    case MoveToState:
        copter_move_to(x, y, navigator);
        break;
    case MoveOnSphereState:
        copter_move_on_sphere(x, y, navigator);
        break;
    case RotateState:
        copter_rotate(x, y, navigator);
        break;
    case TranslateState:
        copter_translate(x, y, navigator);
        break;
    }
}

// --- events ---

void CopterFlyEngine::start(DirMode direction, Navigator *navigator)
{
    init_cursor_pos(navigator);
    if(!_idle_flag)
    {
        _idle_flag = true;
        return;
    }
    _dir_mode = direction;
    _idle_flag = false;
}

void CopterFlyEngine::nextMoveMode()
{
    _move_mode = _move_mode >= HorizontalMode ? RadialMode : MoveMode(_move_mode + 1);
}

void CopterFlyEngine::changeSpeed(Speed change)
{
    bool const moves = _copter_state == MoveToState || _copter_state == TranslateState;
    bool const turns = _copter_state == MoveOnSphereState || _copter_state == RotateState;
    if(!moves && !turns)
        return;
    Real32 &factor = moves ? _motion_factor : _rot_factor;
    Real32 const multiplier = moves ? _motion_multiplier : _rot_multiplier;
    Real32 const maximum = moves ? _motion_max_factor : _rot_max_factor;
    if(change == Speed::Slower)
    {
        factor /= multiplier;
        if(factor < 1e-6f)
            factor = 1e-6f;
        return;
    }
    factor *= multiplier;
    if(std::abs(factor) > maximum)
        factor = maximum;
}

void CopterFlyEngine::buttonPress(Int16 button, Int16, Int16, Navigator *navigator)
{
    switch(button)
    {
    case NavigatorEvent::LeftButton:
        start(ForwardDir, navigator);
        break;
    case NavigatorEvent::RightButton:
        start(BackwardDir, navigator);
        break;
    case NavigatorEvent::MiddleButton:
        init_cursor_pos(navigator);
        if(_copter_state == RotateState || _copter_state == TranslateState)
            nextMoveMode();
        break;
    case NavigatorEvent::WheelUp:
        init_cursor_pos(navigator);
        changeSpeed(Speed::Slower);
        break;
    case NavigatorEvent::WheelDown:
        init_cursor_pos(navigator);
        changeSpeed(Speed::Faster);
        break;
    default:
        break;
    }
}

void CopterFlyEngine::keyPressEx(Int16 key, UInt16 modifiers, Int16, Int16, Navigator *)
{
    if((modifiers & NavigatorEvent::KeyUp) != 0 || !_idle_flag)
        return;
    if((modifiers & NavigatorEvent::VirtualKey) != 0)
    {
        if(key == 13) // return
            nextMoveMode();
        else if(key == ' ')
            _copter_state =
                _copter_state >= TranslateState ? MoveToState : State(_copter_state + 1);
        return;
    }
    if(key == '+')
        changeSpeed(Speed::Faster);
    else if(key == '-')
        changeSpeed(Speed::Slower);
}

void CopterFlyEngine::buttonRelease(Int16, Int16, Int16, Navigator *) {}
void CopterFlyEngine::moveTo(Int16, Int16, Navigator *) {}
void CopterFlyEngine::mouseMove(Int16, Int16, Navigator *) {}
void CopterFlyEngine::killFocus(Navigator *) {}
} // namespace OSG
