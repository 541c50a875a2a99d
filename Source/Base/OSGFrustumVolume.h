#pragma once

/// \file
/// The six planes of a view or selection frustum.

#include <array>

#include "OSGPlane.h"
#include "OSGVolume.h"

namespace OSG
{
/// What lies on the positive side of all six planes, kept contiguously in the order near, far,
/// left, right, top, bottom. A fresh one has six planes of normal zero and distance 0: it culls
/// nothing.
class OSG_BASE_API FrustumVolume : public Volume
{
  public:
    FrustumVolume();
    FrustumVolume(Plane const &near, Plane const &far, Plane const &left, Plane const &right,
                  Plane const &top, Plane const &bottom);
    FrustumVolume(FrustumVolume const &) = default;
    FrustumVolume &operator=(FrustumVolume const &) = default;
    ~FrustumVolume() override;

    std::array<Plane, 6> const &getPlanes() const & { return _planes; }
    /// Of a temporary the planes themselves: a loop over them must not outlive it.
    std::array<Plane, 6> getPlanes() && { return _planes; }
    /// `i` from 0 (near) to 5 (bottom).
    Plane const &getPlane(UInt32 i) const { return _planes[i]; }

    /// The corners where three planes meet, near before far, each face from left bottom to right
    /// bottom, right top, left top. False where three planes do not meet in one point.
    bool getCorners(std::array<Pnt3f, 8> &corners) const;
    /// Mean of the corners; the origin where there are none.
    void getCenter(Pnt3f &center) const override;
    /// Box of the corners; where there are none, from the most negative to the largest number.
    void getBounds(Pnt3f &min, Pnt3f &max) const override;

    /// Boxes: BoxVolume::intersectFrustum. Other frusta always meet unless one is empty.
    bool intersect(Volume const &other) const override;
    /// Whether a point is in all six half spaces.
    bool intersect(Pnt3f const &point) const;
    /// Moves planes outwards until the point, or the corners of the bounds, are inside.
    void extendBy(Pnt3f const &point) override;
    void extendBy(Volume const &other) override;
    /// Any invertible matrix, projective too; a singular one is logged and leaves the planes.
    void transform(Matrix const &matrix) override;

    /// The planes, exact.
    friend bool operator==(FrustumVolume const &a, FrustumVolume const &b)
    {
        return a._planes == b._planes;
    }

  private:
    std::array<Plane, 6> _planes;
};
} // namespace OSG
