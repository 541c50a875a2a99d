#pragma once

/// \file
/// The planes of a frustum in vector registers, for tests of very many points.

#include "OSGFourLanes.h"
#include "OSGPlane.h"

namespace OSG
{
/// Tests a point against all six planes at once, without a branch. The terms are added in the order
/// of `Plane::distance`, so the distances have the same bits.
class FrustumLanes
{
  public:
    /// The position of a triangle relative to the frustum.
    enum class Grade
    {
        Outside,   ///< all corners are outside one plane
        Contained, ///< all corners are inside all planes
        Crossing   ///< clipping decides
    };

    /// Reads six planes and keeps no pointer.
    explicit FrustumLanes(Plane const *planes)
    {
        for(int k = 0; k < 6; ++k)
        {
            Vec3f const &normal = planes[k].getNormal();
            _half[k / 4].x[k % 4] = normal[0];
            _half[k / 4].y[k % 4] = normal[1];
            _half[k / 4].z[k % 4] = normal[2];
            _half[k / 4].d[k % 4] = planes[k].getDistanceFromOrigin();
        }
    }

    /// Bit k is set where `plane[k].isInHalfSpace(point)` is false.
    UInt32 outside(Pnt3f const &point) const
    {
        UInt32 const inside = _half[0].inside(point) | _half[1].inside(point) << 4;
        return ~inside & 0x3Fu; // the last two of eight lanes hold no plane
    }

    Grade grade(Pnt3f const *corners) const
    {
        return grade(outside(corners[0]), outside(corners[1]), outside(corners[2]));
    }
    /// The grade of a triangle from the results of outside() for its corners.
    static Grade grade(UInt32 a, UInt32 b, UInt32 c)
    {
        if((a & b & c) != 0)
            return Grade::Outside;
        return (a | b | c) == 0 ? Grade::Contained : Grade::Crossing;
    }

  private:
    struct Half
    {
        FourReal32 x{};
        FourReal32 y{};
        FourReal32 z{};
        FourReal32 d{};

        UInt32 inside(Pnt3f const &point) const
        {
            FourReal32 const distance = x * point[0] + y * point[1] + z * point[2] - d;
            return lane_bits(distance >= 0.f);
        }
    };

    Half _half[2];
};
} // namespace OSG
