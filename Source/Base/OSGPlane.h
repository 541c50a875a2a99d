#pragma once

/// \file
/// An oriented plane: all points p with n . p - d == 0.

#include <cmath>
#include <limits>

#include "OSGLine.h"
#include "OSGMatrix.h"
#include "OSGVector.h"

namespace OSG
{
/// n . p - d is the signed distance of p from the plane. It is positive on the side that the normal
/// points to. It is always computed as ((n.x p.x + n.y p.y) + n.z p.z) - d: box tests rely on the
/// rounding of this order. Degenerate input gives a normal that is zero, short or NaN, never a
/// failure.
class Plane
{
  public:
    /// The normal zero and the distance 0: every point is in the half space.
    Plane() = default;
    /// The plane through three points. Seen from the side that the normal points to, they are
    /// counter-clockwise.
    ///
    /// The normal is (p1 - p0) x (p2 - p0) divided by its length, computed in double precision and
    /// rounded once. It has length 1 however small or large the triangle is. Three points on one
    /// line give the normal zero and the distance 0, so every point is in the half space.
    /// Coordinates that are not finite give NaN, so no point is in the half space.
    Plane(Pnt3f const &p0, Pnt3f const &p1, Pnt3f const &p2);
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
    /// Sets both values without normalising the normal.
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
    /// True for a point on the plane. False for a point with a NaN coordinate.
    bool isInHalfSpace(Pnt3f const &p) const { return distance(p) >= 0.f; }

    /// Computes the point where the infinite line through `line` meets the plane. False, with
    /// `point` unchanged, where the line is parallel (|n . direction| below 1e-6) or a number is
    /// NaN.
    bool intersectInfinite(Line const &line, Pnt3f &point) const
    {
        Real32 const along = _normal.dot(line.getDirection());
        if(!(std::abs(along) >= 1e-6f))
            return false;
        point = line.getPoint(-distance(line.getPosition()) / along);
        return true;
    }

    /// Transforms the plane by an invertible matrix, also a projective one. Points keep their side
    /// of the plane. A singular matrix is logged and changes nothing.
    void transform(Matrix const &matrix)
    {
        Matrix inverse;
        if(inverse.invertFrom(matrix))
            transformByInverse(inverse);
    }
    /// Like transform, for a caller that has the inverse already.
    void transformByInverse(Matrix const &inverse)
    {
        Vec4f const plane(_normal[0], _normal[1], _normal[2], -_distance);
        Vec3f const normal(inverse[0].dot(plane), inverse[1].dot(plane), inverse[2].dot(plane));
        Real32 const length = normal.length();
        Real32 const scale = length < UnitLengthEpsilon ? 1.f : 1.f / length;
        setValue(normal * scale, -inverse[3].dot(plane) * scale);
    }

    /// Compares normal and distance exactly.
    friend bool operator==(Plane const &a, Plane const &b)
    {
        return a._normal == b._normal && a._distance == b._distance;
    }

  private:
    Vec3f _normal;
    Real32 _distance = 0.f;
};

inline Plane::Plane(Pnt3f const &p0, Pnt3f const &p1, Pnt3f const &p2)
{
    // Products and squares of Real32 differences do not overflow or underflow in Real64.
    Real64 const a[3] = {Real64(p1[0]) - p0[0], Real64(p1[1]) - p0[1], Real64(p1[2]) - p0[2]};
    Real64 const b[3] = {Real64(p2[0]) - p0[0], Real64(p2[1]) - p0[1], Real64(p2[2]) - p0[2]};
    Real64 const normal[3] = {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2],
                              a[0] * b[1] - a[1] * b[0]};
    Real64 const length =
        std::sqrt((normal[0] * normal[0] + normal[1] * normal[1]) + normal[2] * normal[2]);
    if(length == 0)
        return;
    if(!std::isfinite(length))
    {
        Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
        setValue(Vec3f(nan, nan, nan), nan);
        return;
    }
    for(UInt32 i = 0; i < 3; ++i)
        _normal[i] = static_cast<Real32>(normal[i] / length);
    _distance = _normal.dot(p0.subZero());
}
} // namespace OSG
