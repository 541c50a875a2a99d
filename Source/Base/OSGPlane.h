#pragma once

/// \file
/// An oriented plane: all points p with n . p - d == 0.

#include <cmath>

#include "OSGLine.h"
#include "OSGMatrix.h"
#include "OSGVector.h"

namespace OSG
{
/// n . p - d is the signed distance of p from the plane, positive on the side that the normal
/// points to. It is always added as (n.x p.x + n.y p.y) + n.z p.z, then d is taken off: boxes rely
/// on the rounding of this order. Degenerate input gives a normal that is short or not a number,
/// never a failure.
class Plane
{
  public:
    /// Normal zero, distance 0: every point is in its half space.
    Plane() = default;
    /// Through three points; they run counter-clockwise as seen from where the normal points to.
    /// The normal is (p1 - p0) x (p2 - p0), normalised unless shorter than 1e-6.
    Plane(Pnt3f const &p0, Pnt3f const &p1, Pnt3f const &p2)
        : Plane((p1 - p0).cross(p2 - p0), p0)
    {
    }
    /// The normal is normalised unless shorter than 1e-6.
    Plane(Vec3f const &normal, Pnt3f const &point)
        : _normal(normal)
    {
        _normal.normalize();
        _distance = _normal.dot(point.subZero());
    }

    Vec3f const &getNormal() const { return _normal; }
    /// The d of n . p - d.
    Real32 getDistanceFromOrigin() const { return _distance; }
    /// Taken as they are, nothing is normalised.
    void setValue(Vec3f const &normal, Real32 distanceFromOrigin)
    {
        _normal = normal;
        _distance = distanceFromOrigin;
    }

    /// Signed distance of a point.
    Real32 distance(Pnt3f const &p) const
    {
        return _normal[0] * p[0] + _normal[1] * p[1] + _normal[2] * p[2] - _distance;
    }
    /// A point on the plane counts; one with a coordinate that is not a number does not.
    bool isInHalfSpace(Pnt3f const &p) const { return distance(p) >= 0.f; }

    /// Where the infinite line through `line` meets the plane. False, and `point` untouched, where
    /// it runs parallel (|n . direction| below 1e-6) or something is not a number.
    bool intersectInfinite(Line const &line, Pnt3f &point) const
    {
        Real32 const along = _normal.dot(line.getDirection());
        if(!(std::abs(along) >= 1e-6f))
            return false;
        point = line.getPoint(-distance(line.getPosition()) / along);
        return true;
    }

    /// Carries the plane through an invertible matrix, projective too; the side of a point stays
    /// its side. A singular matrix is logged and leaves the plane.
    void transform(Matrix const &matrix)
    {
        Matrix inverse;
        if(inverse.invertFrom(matrix))
            transformByInverse(inverse);
    }
    /// The same where the inverse is known already.
    void transformByInverse(Matrix const &inverse)
    {
        Vec4f const plane(_normal[0], _normal[1], _normal[2], -_distance);
        Vec3f const normal(inverse[0].dot(plane), inverse[1].dot(plane), inverse[2].dot(plane));
        Real32 const length = normal.length();
        Real32 const scale = length < unit_length_epsilon ? 1.f : 1.f / length;
        setValue(normal * scale, -inverse[3].dot(plane) * scale);
    }

    /// Exact.
    friend bool operator==(Plane const &a, Plane const &b)
    {
        return a._normal == b._normal && a._distance == b._distance;
    }

  private:
    Vec3f _normal;
    Real32 _distance = 0.f;
};
} // namespace OSG
