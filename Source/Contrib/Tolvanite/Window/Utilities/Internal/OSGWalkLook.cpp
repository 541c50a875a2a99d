#include "OSGWalkLook.h"

#include <cmath>
#include <numbers>

#include "OSGNavigationMath.h"

namespace OSG
{
namespace WalkLook
{
using namespace NavigationMath;

namespace
{
constexpr Real32 SteepestView = 1.4835298f; // 85 degrees

bool is_nothing(Vec3f const &vector)
{
    constexpr Real32 Smallest = 1e-6f;
    return std::abs(vector[0]) <= Smallest && std::abs(vector[1]) <= Smallest &&
           std::abs(vector[2]) <= Smallest;
}
} // namespace

Real32 angle_between(Vec3f const &a, Vec3f const &b)
{
    // The arc cosine of a rounded number beyond 1 would be NaN.
    constexpr Real32 Margin = 1e-6f;
    if(is_nothing(a) || is_nothing(b))
        return 0.f;
    Real32 const cosine = a.dot(b) / (a.length() * b.length());
    if(cosine - Margin < -1.f)
        return std::numbers::pi_v<Real32>;
    if(cosine + Margin > 1.f)
        return 0.f;
    return std::acos(cosine);
}

Pnt3f turned(Pnt3f const &from, Pnt3f const &at, Vec3f const &up, Real32 yaw, Real32 pitch)
{
    Pnt3f const yawed = rotate_around(at, from, up, -yaw);
    Pnt3f const pitched = pitch_around(yawed, from, up, -pitch);

    Vec3f const upward = unit(up);
    Vec3f const level = unit(yawed - from);
    Vec3f const horizon = unit(level - level.dot(upward) * upward);
    Vec3f const way = pitched - from;
    Vec3f const view = unit(way);
    Real32 const steepness = angle_between(view, horizon);
    if(!(steepness > SteepestView))
        return pitched;
    Vec3f const side = unit(horizon.cross(upward));
    Vec3f const bent =
        unit(std::cos(SteepestView) * horizon + view.dot(side) * side + view.dot(upward) * upward);
    return from + way.length() * bent;
}

Real32 pitch_to_horizon(Pnt3f const &from, Pnt3f const &at, Vec3f const &up, Real32 fraction)
{
    Real32 const angle = angle_between(unit(at - from), up);
    return static_cast<Real32>((std::numbers::pi / 2 - angle) * fraction);
}
} // namespace WalkLook
} // namespace OSG
