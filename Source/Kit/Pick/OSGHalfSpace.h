#pragma once

#include "OSGDoublePrecision.h"
#include "OSGPlane.h"

namespace OSG
{
/// A side of a plane in double precision: the points p with normal . (p - origin) >= 0. The normal
/// may have any length.
struct HalfSpace
{
    Vec3d normal;
    Pnt3d origin;

    Real64 at(Pnt3d const &point) const { return normal.dot(point - origin); }
    bool holds(Pnt3d const &point) const { return at(point) >= 0; }
};

/// On the side of a plane that its normal points to.
inline HalfSpace half_space_of(Plane const &plane)
{
    Vec3d const normal = wide(plane.getNormal());
    Real64 const square = normal.squareLength();
    Real64 const scale = square > 0 ? plane.getDistanceFromOrigin() / square : 0;
    return {normal, Pnt3d() + normal * scale};
}

/// Through three points; seen from inside they are counter-clockwise. Three points on one line hold
/// everything.
inline HalfSpace half_space_through(Pnt3f const &a, Pnt3f const &b, Pnt3f const &c)
{
    return {(wide(b) - wide(a)).cross(wide(c) - wide(a)), wide(a)};
}
} // namespace OSG
