#include "OSGNavigationMath.h"

#include <algorithm>

#include "OSGHomogeneous.h"

namespace OSG
{
namespace NavigationMath
{
bool is_finite(Matrix const &matrix)
{
    return is_finite(matrix[0]) && is_finite(matrix[1]) && is_finite(matrix[2]) &&
           is_finite(matrix[3]);
}

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

Real32 project_to_sphere(Real32 radius, Real32 x, Real32 y)
{
    Real32 const d = std::sqrt(x * x + y * y);
    if(radius * 0.70710677f > d)
        return std::sqrt(radius * radius - d * d);
    Real32 const t = radius / 1.4142135f;
    return t * t / d;
}

std::optional<Turn> drag_on_sphere(Real32 radius, Real32 fromX, Real32 fromY, Real32 toX,
                                   Real32 toY)
{
    if(std::abs(fromX - toX) <= 1e-6f && std::abs(fromY - toY) <= 1e-6f)
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

// In double precision throughout: the far point is large, and what is left of it small. Neither
// the length nor the sign of the direction counts.
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
