#include "OSGNavigationMath.h"

#include <algorithm>

#include "OSGHomogeneous.h"

namespace OSG
{
namespace NavigationMath
{
Matrix rotation_about(Vec3f const &axis, Real32 angle)
{
    Matrix rotation;
    rotation.setRotate(Quaternion(axis, angle));
    return rotation;
}

Pnt3f rotate_around(Pnt3f const &point, Pnt3f const &center, Vec3f const &axis, Real32 angle)
{
    return center + rotation_about(axis, angle) * (point - center);
}

Pnt3f pitch_around(Pnt3f const &at, Pnt3f const &from, Vec3f const &up, Real32 angle)
{
    Vec3f const side = unit(unit(at - from).cross(up));
    return rotate_around(at, from, side, angle);
}

// Bell's trackball, as it is described in Henriksen, Sporring, Hornbaek: Virtual Trackballs
// Revisited, 2004. At a distance of radius / sqrt(2) from the middle, sphere and hyperbola have the
// same height and the same slope, so that a drag across this circle does not jump.
Real32 project_to_sphere(Real32 radius, Real32 x, Real32 y)
{
    constexpr Real32 InverseRootOfTwo = 0.70710677f;
    constexpr Real32 RootOfTwo = 1.4142135f;
    Real32 const d = std::sqrt(x * x + y * y);
    if(radius * InverseRootOfTwo > d)
        return std::sqrt(radius * radius - d * d);
    Real32 const t = radius / RootOfTwo;
    return t * t / d;
}

// The axis is the cross product of the new and the old place on the ball. This order turns the
// camera against the drag, so that the scene follows the pointer. The angle is the one whose chord
// on a sphere of the radius is as long as the way between the two places. On the hyperbola that way
// may be longer than the diameter, hence the clamp.
std::optional<Turn> drag_on_sphere(Real32 radius, Real32 fromX, Real32 fromY, Real32 toX,
                                   Real32 toY)
{
    // The direction of a shorter drag would be rounding error.
    constexpr Real32 ShortestDrag = 1e-6f;
    if(std::abs(fromX - toX) <= ShortestDrag && std::abs(fromY - toY) <= ShortestDrag)
        return std::nullopt;
    Real32 const z1 = project_to_sphere(radius, fromX, fromY);
    Real32 const z2 = project_to_sphere(radius, toX, toY);
    Vec3f const axis(z1 * toY - z2 * fromY, z2 * fromX - z1 * toX, fromY * toX - fromX * toY);
    Vec3f const way(fromX - toX, fromY - toY, z1 - z2);
    Real32 const t = std::clamp(way.length() / (2.f * radius), -1.f, 1.f);
    return Turn{axis, 2.f * std::asin(t)};
}

// --- pans ---

namespace
{
template <class Tuple>
Vec3d to_double(Tuple const &values)
{
    return Vec3d(values[0], values[1], values[2]);
}
} // namespace

// Two points on the line through the middle of the screen: one on the far plane and one nearer to
// the eye. They are subtracted before the division by w, since the far one may lie at infinity.
Vec3f screen_axis(Matrix4d const &screenToWorld)
{
    Vec3d const axis = homogeneous_way(homogeneous_image(screenToWorld, Pnt3d(0, 0, 1)),
                                       homogeneous_image(screenToWorld, Pnt3d(0, 0, 0.5)));
    Real64 const length = axis.length();
    return length > 0 ? Vec3f(axis[0] / length, axis[1] / length, axis[2] / length) : Vec3f();
}

Pnt3f on_plane_through_origin(Line const &ray, Vec3f const &normal)
{
    return ray.getPoint(normal.dot(Pnt3f() - ray.getPosition()) / normal.dot(ray.getDirection()));
}

// The ray of the pointer crosses the plane of the grip in `pointed`. The camera has to move by the
// way from there to the grabbed point. The last step takes that way into the camera's axes: rows 0
// and 1 of the viewing matrix are the camera's x and y axes in world space.
//
// All is computed in double precision, because the far end of the ray has large coordinates and the
// result is a small difference. `direction` may have any length and either sign: both cancel.
std::optional<Vec2f> pan_way(Matrix4d const &screenToWorld, Matrix const &camera,
                             Matrix const &viewing, Grip const &grip, Real32 normX, Real32 normY)
{
    Vec3d const eye = to_double(camera[3]);
    Vec3d const held = to_double(grip.point);
    Vec3d const normal = to_double(grip.normal);
    Vec4d const farEnd = homogeneous_image(screenToWorld, Pnt3d(normX, normY, 1));
    Vec3d const direction = homogeneous_way(Vec4d(eye[0], eye[1], eye[2], 1), farEnd);
    Vec3d const pointed = eye + direction * ((held - eye).dot(normal) / direction.dot(normal));
    Vec3d const way = held - pointed;
    Vec2f const result(way.dot(Vec3d(viewing[0][0], viewing[1][0], viewing[2][0])),
                       way.dot(Vec3d(viewing[0][1], viewing[1][1], viewing[2][1])));
    if(!is_finite(result))
        return std::nullopt;
    return result;
}
} // namespace NavigationMath
} // namespace OSG
