#include "OSGMeasure.h"

#include <cmath>
#include <numbers>

#include "OSGDoublePrecision.h"
#include "OSGFinite.h"

namespace OSG
{
Real64 distance_between(Pnt3f const &a, Pnt3f const &b)
{
    Vec3d const way = wide(b) - wide(a);
    return std::hypot(way[0], way[1], way[2]);
}

// The cosine alone would lose half of the digits near 0 and 180 degrees. Differences of coordinates
// are exact in double precision unless their exponents lie far apart. The products of points on one
// line are then equal, round alike, and cancel in the cross product.
std::optional<Real64> angle_between(Pnt3f const &a, Pnt3f const &middle, Pnt3f const &b)
{
    if(!is_finite(a) || !is_finite(middle) || !is_finite(b) || a == middle || b == middle)
        return std::nullopt;
    Vec3d const toA = wide(a) - wide(middle);
    Vec3d const toB = wide(b) - wide(middle);
    return std::atan2(toA.cross(toB).length(), toA.dot(toB)) * (180 / std::numbers::pi);
}
} // namespace OSG
