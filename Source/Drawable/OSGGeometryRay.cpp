#include "OSGGeometryRay.h"

#include <cmath>

#include "OSGGeometryIterators.h"

namespace OSG
{
namespace
{
Vec3d to_double(Vec3f const &v) { return Vec3d(v[0], v[1], v[2]); }
Vec3d between(Pnt3f const &from, Pnt3f const &to)
{
    return Vec3d(Real64(to[0]) - from[0], Real64(to[1]) - from[1], Real64(to[2]) - from[2]);
}

/// Distance along the ray. It is negative or NaN where the ray misses.
Real64 distance_of(Line const &ray, Vec3d const &direction, Pnt3f const &p0, Vec3d const &edge1,
                   Vec3d const &edge2)
{
    constexpr Real64 Missed = -1;
    constexpr Real64 FlatSine = 1e-12; // of the angle between ray and triangle
    Vec3d const p = direction.cross(edge2);
    Real64 const determinant = edge1.dot(p);
    Real64 const square = determinant * determinant;
    Real64 const flat = FlatSine * FlatSine * edge1.squareLength() * edge2.squareLength();
    if(!(square > flat) || !std::isfinite(determinant))
        return Missed;
    Vec3d const s = between(p0, ray.getPosition());
    Real64 const u = s.dot(p) / determinant;
    if(!(u >= 0 && u <= 1))
        return Missed;
    Vec3d const q = s.cross(edge1);
    Real64 const v = direction.dot(q) / determinant;
    if(!(v >= 0 && u + v <= 1))
        return Missed;
    return edge2.dot(q) / determinant;
}

Vec3f face_normal(Vec3d const &edge1, Vec3d const &edge2)
{
    Vec3d const across = edge1.cross(edge2);
    Vec3d const unit = across * (1 / across.length());
    return Vec3f(unit[0], unit[1], unit[2]);
}
} // namespace

RayHit nearest_triangle(Geometry const &geometry, Line const &ray, Real64 reach)
{
    RayHit nearest;
    nearest.distance = reach;
    Vec3d const direction = to_double(ray.getDirection());
    TriangleIterator const end = geometry.endTriangles();
    for(TriangleIterator it = geometry.beginTriangles(); it != end; ++it)
    {
        Pnt3f const p0 = it.getPosition(0);
        Vec3d const edge1 = between(p0, it.getPosition(1));
        Vec3d const edge2 = between(p0, it.getPosition(2));
        Real64 const distance = distance_of(ray, direction, p0, edge1, edge2);
        bool const first = nearest.triangle < 0 && distance == reach;
        if(!(distance >= 0) || !(distance < nearest.distance || first))
            continue;
        nearest = {distance, it.getIndex(), face_normal(edge1, edge2)};
    }
    return nearest;
}
} // namespace OSG
