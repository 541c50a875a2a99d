#pragma once

/// \file
/// The six planes of a view or selection frustum.

#include <array>

#include "OSGPlane.h"
#include "OSGVolume.h"

namespace OSG
{
/// The space on the positive side of six planes. They are stored contiguously in the order near,
/// far, left, right, top, bottom. The planes of a new volume have the normal zero and the distance
/// 0, so it culls nothing.
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
    /// Called on a temporary, this returns a copy, so that a loop over the planes outlives the
    /// temporary.
    std::array<Plane, 6> getPlanes() && { return _planes; }
    /// `i` from 0 (near) to 5 (bottom).
    Plane const &getPlane(UInt32 i) const { return _planes[i]; }

    /// Computes the corners: the near face first, each face in the order left bottom, right bottom,
    /// right top, left top. False where three of the planes do not meet in one point.
    bool getCorners(std::array<Pnt3f, 8> &corners) const;
    /// The mean of the corners. The origin where there are no corners.
    void getCenter(Pnt3f &center) const override;
    /// The box around the corners. Where there are no corners, the range of all finite numbers.
    void getBounds(Pnt3f &min, Pnt3f &max) const override;

    /// For a box see BoxVolume::intersectFrustum. Two frusta always intersect unless one is empty.
    bool intersect(Volume const &other) const override;
    /// Whether a point lies in all six half spaces.
    bool intersect(Pnt3f const &point) const;
    /// Moves planes outwards until the point, or each corner of the volume's bounds, is inside.
    void extendBy(Pnt3f const &point) override;
    void extendBy(Volume const &other) override;
    /// Takes any invertible matrix, also a projective one. A singular matrix is logged and changes
    /// nothing.
    void transform(Matrix const &matrix) override;

    /// Compares the planes exactly.
    friend bool operator==(FrustumVolume const &a, FrustumVolume const &b)
    {
        return a._planes == b._planes;
    }

  private:
    std::array<Plane, 6> _planes;
};
} // namespace OSG
