#include "OSGCadTrackballEngine.h"

#include "OSGIntersectAction.h"
#include "OSGLog.h"
#include "OSGMatrixUtility.h"
#include "OSGNavigator.h"
#include "OSGOrthographicCamera.h"
#include "OSGPlane.h"
#include "OSGWindow.h"

namespace OSG
{
using namespace NavigationMath;

namespace
{
constexpr Real32 AnyDistance = 1e30f;

Camera *camera_of(Navigator const *navigator)
{
    Viewport *const viewport = navigator->getViewport();
    return viewport != nullptr ? viewport->getCamera() : nullptr;
}

/// Null for other cameras, and for types derived from it.
OrthographicCamera *orthographic(Navigator const *navigator)
{
    Camera *const camera = camera_of(navigator);
    bool const exact =
        camera != nullptr && camera->getTypeId() == OrthographicCamera::getClassType().getId();
    return exact ? dynamic_cast<OrthographicCamera *>(camera) : nullptr;
}

void scale_picture(OrthographicCamera &camera, Real32 ratio)
{
    Real32 const size = camera.getVerticalSize() * ratio;
    if(is_finite(size))
        camera.setVerticalSize(size);
}

/// The nearest point of the scene on the ray.
std::optional<Pnt3f> point_in_scene(Navigator const *navigator, Line const &ray)
{
    UnrecordedRefPtr<IntersectAction> const action(IntersectAction::create());
    action->setLine(ray, AnyDistance);
    action->apply(navigator->getViewport()->getRoot());
    if(!action->didHit())
        return std::nullopt;
    return action->getHitPoint();
}

UInt32 pixel_width(Viewport const &viewport)
{
    return static_cast<UInt32>(viewport.calcPixelWidth());
}
UInt32 pixel_height(Viewport const &viewport)
{
    return static_cast<UInt32>(viewport.calcPixelHeight());
}

/// The first row of the view, counted from the window's top; without a window from the view's own
/// top.
Int32 pixel_top(Viewport const &viewport)
{
    Window const *const window = viewport.getParent();
    Int32 const rows = window != nullptr ? window->getHeight() : viewport.calcPixelHeight();
    return rows - viewport.calcPixelBottom() - viewport.calcPixelHeight();
}
} // namespace

CadTrackballEngine::CadTrackballEngine(Real32 radius)
    : _radius(radius)
{
    _distance = (_at_point - _from_point).length();
}

CadTrackballEngine::~CadTrackballEngine() = default;

TransitPtr<CadTrackballEngine> CadTrackballEngine::create(Real32 radius)
{
    void *const block = MemMalloc(sizeof(CadTrackballEngine));
    return TransitPtr<CadTrackballEngine>(block != nullptr ? new(block) CadTrackballEngine(radius)
                                                           : nullptr);
}

// --- pose ---

namespace
{
/// The camera that stands `distance` behind the centre of an orbit, along the orbit's z axis.
Matrix camera_behind(Matrix const &center, Real32 distance)
{
    Matrix back;
    back.setTranslate(0.f, 0.f, distance);
    return center * back;
}
} // namespace

void CadTrackballEngine::updateFinalMatrix()
{
    _final_matrix = camera_behind(_trackball_matrix, _distance);
}

bool CadTrackballEngine::setOrbit(Matrix const &center, Real32 distance)
{
    Matrix const camera = camera_behind(center, distance);
    if(!is_finite(center) || !is_finite(distance) || !is_finite(camera))
        return false;
    _trackball_matrix = center;
    _distance = distance;
    return true;
}

Matrix const &CadTrackballEngine::getMatrix()
{
    updateFinalMatrix();
    return _final_matrix;
}

Pnt3f const &CadTrackballEngine::getFrom()
{
    _from_point = position_of(_final_matrix);
    return _from_point;
}

Pnt3f const &CadTrackballEngine::getAt()
{
    _at_point = position_of(_final_matrix) - axis_of(_final_matrix, 2) * _distance;
    return _at_point;
}

Vec3f const &CadTrackballEngine::getUp()
{
    _up_vector = axis_of(_final_matrix, 1);
    return _up_vector;
}

Real32 CadTrackballEngine::getDistance() { return _distance; }

void CadTrackballEngine::setFrom(Pnt3f from)
{
    Vec3f const up = getUp();
    set(from, getAt(), up);
}

void CadTrackballEngine::setAt(Pnt3f at)
{
    Vec3f const up = getUp();
    set(getFrom(), at, up);
}

void CadTrackballEngine::setUp(Vec3f up)
{
    Pnt3f const at = getAt();
    set(getFrom(), at, up);
}

void CadTrackballEngine::set(Matrix const &matrix)
{
    Pnt3f const from = position_of(matrix);
    Real32 const distance = from.subZero().length();
    Pnt3f const at = from - axis_of(matrix, 2) * distance;
    Vec3f const up = axis_of(matrix, 1);
    // The distance is taken even if the orbit then gives no pose, as in the world's origin.
    if(is_finite(at) && is_finite(up) && setOrbit(_trackball_matrix, distance))
    {
        _from_point = from;
        _at_point = at;
        _up_vector = up;
    }
    set(from, at, up);
}

void CadTrackballEngine::set(Pnt3f from, Pnt3f at, Vec3f up)
{
    // The centre looks away from the camera, so that its z axis points towards the camera.
    Matrix center;
    if(MatrixLookAt(center, at, at + (at - from), up) || !setOrbit(center, (at - from).length()))
    {
        OSG_LOG_NOTICE("CadTrackballEngine: set(.,.,.), failed");
        return;
    }
    updateFinalMatrix();
}

void CadTrackballEngine::setDistance(Real32 distance)
{
    setOrbit(_trackball_matrix, distance);
    updateFinalMatrix();
}

// --- motion ---

Real32 CadTrackballEngine::projectToSphere(Real32 radius, Real32 x, Real32 y)
{
    return project_to_sphere(radius, x, y);
}

void CadTrackballEngine::rotate(Real32 fromX, Real32 fromY, Real32 toX, Real32 toY)
{
    std::optional<Turn> const turn = drag_on_sphere(_radius, fromX, fromY, toX, toY);
    if(turn)
        setOrbit(_trackball_matrix * rotation_about(turn->axis, turn->angle), _distance);
}

void CadTrackballEngine::translateXY(Real32 distanceX, Real32 distanceY)
{
    Matrix shift;
    shift.setTranslate(distanceX, distanceY, 0.f);
    setOrbit(_trackball_matrix * shift, _distance);
}

void CadTrackballEngine::translateZ(Real32 distance) { changeDistance(distance); }

void CadTrackballEngine::changeDistance(Real32 by) { setOrbit(_trackball_matrix, _distance + by); }

// --- pan ---

void CadTrackballEngine::getIntersectionPoint(Int16 x, Int16 y, Navigator *navigator)
{
    Camera *const camera = camera_of(navigator);
    Viewport *const viewport = navigator->getViewport();
    Line ray;
    _grip.normal = Vec3f(); // grabs nothing
    if(camera == nullptr || !camera->calcViewRay(ray, x, y, *viewport))
        return;
    UInt32 const width = pixel_width(*viewport);
    UInt32 const height = pixel_height(*viewport);
    Matrix viewing;
    camera->getViewing(viewing, width, height);
    Matrix4d toWorld;
    camera->calcScreenToWorld(toWorld, viewing, width, height);
    _grip.normal = screen_axis(toWorld);
    std::optional<Pnt3f> const hit =
        navigator->getClickNoIntersect() ? std::nullopt : point_in_scene(navigator, ray);
    _grip.point = hit ? *hit : on_plane_through_origin(ray, _grip.normal);
}

void CadTrackballEngine::calcDeltas(Int16, Int16, Int16 toX, Int16 toY, Real32 &distanceX,
                                    Real32 &distanceY, Navigator *navigator)
{
    distanceX = distanceY = 0.f;
    Camera *const camera = camera_of(navigator);
    Real32 normX;
    Real32 normY;
    if(camera == nullptr ||
       !navigator->getViewport()->calcNormalizedCoordinates(normX, normY, toX, toY))
        return;
    Matrix const matrix = getMatrix();
    Matrix viewing;
    viewing.invertFrom(matrix);
    Matrix4d toWorld;
    camera->calcScreenToWorld(toWorld, viewing, pixel_width(*navigator->getViewport()),
                              pixel_height(*navigator->getViewport()));
    std::optional<Vec2f> const way = pan_way(toWorld, matrix, viewing, _grip, normX, normY);
    if(!way)
        return;
    distanceX = (*way)[0];
    distanceY = (*way)[1];
}

bool CadTrackballEngine::translateOrtho(Int16 lastX, Int16 lastY, Int16 x, Int16 y,
                                        Navigator *navigator)
{
    Pnt3f const from = getFrom();
    Pnt3f const at = getAt();
    Vec3f const direction = at - from;
    if(x == lastX && y == lastY)
        return false;
    Camera *const camera = camera_of(navigator);
    if(camera == nullptr)
        return false;
    Viewport const &viewport = *navigator->getViewport();
    // The camera moves to what lies as far from the middle of the view as the pointer has moved, on
    // the other side. Pixels count from the window's corner, hence the view's own left and top. The
    // extra 1 is part of the rule: a pan upwards is one pixel longer, one downwards one shorter.
    Int32 const middleX = viewport.calcPixelLeft() + viewport.calcPixelWidth() / 2;
    Int32 const middleY = pixel_top(viewport) + viewport.calcPixelHeight() / 2;
    Line ray;
    if(!camera->calcViewRay(ray, middleX - (x - lastX), middleY - (y - lastY) + 1, viewport))
        return false;
    Pnt3f crossing;
    if(!Plane(direction, from).intersectInfinite(ray, crossing))
        return false;
    set(crossing, crossing + direction, getUp());
    navigator->updateCameraTransformation();
    return true;
}

void CadTrackballEngine::pan(Int16 x, Int16 y, Navigator *navigator)
{
    if(orthographic(navigator) != nullptr)
    {
        if(translateOrtho(_last_x, _last_y, x, y, navigator))
        {
            _last_x = x;
            _last_y = y;
        }
        return;
    }
    Real32 distanceX, distanceY;
    calcDeltas(navigator->getLastX(), navigator->getLastY(), x, y, distanceX, distanceY, navigator);
    translateXY(distanceX, distanceY);
}

// --- zoom ---

void CadTrackballEngine::zoomByStep(Zoom zoom, Navigator *navigator)
{
    if(OrthographicCamera *const camera = orthographic(navigator))
    {
        scale_picture(*camera,
                      zoom == Zoom::Nearer ? 1.f / _wheel_factor_ortho : _wheel_factor_ortho);
        return;
    }
    Real32 const step = navigator->getMotionFactor() * _wheel_factor_persp;
    changeDistance(zoom == Zoom::Nearer ? -step : step);
}

void CadTrackballEngine::zoomByDrag(Real32 way, Navigator *navigator)
{
    if(OrthographicCamera *const camera = orthographic(navigator))
    {
        // A move that is only sideways counts as one upwards.
        scale_picture(*camera, way < 0.f ? 0.8333333f : 1.2f);
        return;
    }
    Real32 const sign = way > 0.f ? 1.f : (way < 0.f ? -1.f : 0.f);
    changeDistance(navigator->getMotionFactor() * (way * way * (sign * 100.f)));
}

// --- events ---

void CadTrackballEngine::buttonPress(Int16 button, Int16 x, Int16 y, Navigator *navigator)
{
    switch(button)
    {
    case NavigatorEvent::LeftButton:
        _state = Rotating;
        break;
    case NavigatorEvent::MiddleButton:
        _state = Panning;
        getIntersectionPoint(x, y, navigator);
        _last_x = x;
        _last_y = y;
        break;
    case NavigatorEvent::RightButton:
        _state = Zooming;
        break;
    case NavigatorEvent::WheelUp:
        _state = Idle;
        zoomByStep(Zoom::Nearer, navigator);
        break;
    case NavigatorEvent::WheelDown:
        _state = Idle;
        zoomByStep(Zoom::Farther, navigator);
        break;
    default:
        OSG_LOG_NOTICE("CadTrackballEngine: buttonPress, unknown button\n");
    }
}

void CadTrackballEngine::buttonRelease(Int16, Int16 x, Int16 y, Navigator *navigator)
{
    bool const dragging = _state == Rotating || _state == Panning || _state == Zooming;
    Camera *const camera = camera_of(navigator);
    Line ray;
    if(dragging && !navigator->getMoved() && navigator->getClickCenter() && camera != nullptr &&
       camera->calcViewRay(ray, x, y, *navigator->getViewport()))
    {
        if(std::optional<Pnt3f> const hit = point_in_scene(navigator, ray))
            setAt(*hit);
    }
    _state = Idle;
}

void CadTrackballEngine::moveTo(Int16 x, Int16 y, Navigator *navigator)
{
    Real32 fromX, fromY, toX, toY;
    navigator->calcFromTo(x, y, fromX, fromY, toX, toY);
    switch(_state)
    {
    case Rotating:
        rotate(fromX, fromY, toX, toY);
        break;
    case Panning:
        pan(x, y, navigator);
        break;
    case Zooming:
        zoomByDrag(toY - fromY, navigator);
        break;
    default:
        break;
    }
}

void CadTrackballEngine::key_conversion(Int16 &key, UInt16 modifiers) const
{
    if((modifiers & NavigatorEvent::VirtualKey) == 0)
        return;
    switch(key)
    {
    case 33: // page up
        key = NavigatorEvent::RotateLeftKey;
        break;
    case 34: // page down
        key = NavigatorEvent::RotateRightKey;
        break;
    case 37: // arrows
        key = NavigatorEvent::LeftKey;
        break;
    case 38:
        key = NavigatorEvent::ForwardKey;
        break;
    case 39:
        key = NavigatorEvent::RightKey;
        break;
    case 40:
        key = NavigatorEvent::BackwardKey;
        break;
    default:
        break;
    }
}

void CadTrackballEngine::keyPressEx(Int16 key, UInt16 modifiers, Int16, Int16, Navigator *navigator)
{
    if((modifiers & NavigatorEvent::KeyUp) != 0)
        return;
    key_conversion(key, modifiers);
    switch(key)
    {
    case NavigatorEvent::LeftKey:
    case NavigatorEvent::RightKey:
        break;
    case NavigatorEvent::ForwardKey:
        zoomByStep(Zoom::Nearer, navigator);
        break;
    case NavigatorEvent::BackwardKey:
        zoomByStep(Zoom::Farther, navigator);
        break;
    default:
        OSG_LOG_NOTICE("CadTrackballEngine: keyPress, unknown key\n");
    }
}

void CadTrackballEngine::idle(Int16, Int16, Int16, Navigator *) {}
void CadTrackballEngine::mouseMove(Int16, Int16, Navigator *) {}
void CadTrackballEngine::killFocus(Navigator *) {}
} // namespace OSG
