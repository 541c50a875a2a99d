#include "OSGWalkSettings.h"

#include <cmath>

namespace OSG
{
void WalkSettings::setFieldOfView(Real32 degrees)
{
    if(std::abs(degrees) > FieldOfViewMax)
        cameraFieldOfView = FieldOfViewMax;
    else if(std::abs(degrees) < FieldOfViewMin)
        cameraFieldOfView = FieldOfViewMin;
    else
        cameraFieldOfView = degrees;
}

Real32 percent_of_factor(Real32 factor, Real32 maximum) { return factor * 100.f / maximum; }

Real32 factor_of_percent(Real32 percent, Real32 maximum)
{
    Real32 const factor = (percent < 0.f ? 0.f : percent) * maximum / 100.f;
    return factor > maximum ? maximum : factor;
}

Real32 decreased_factor(Real32 factor, Real32 multiplier)
{
    constexpr Real32 Smallest = 1e-6f;
    Real32 const result = factor / multiplier;
    return result < Smallest ? Smallest : result;
}

Real32 increased_factor(Real32 factor, Real32 multiplier, Real32 maximum)
{
    Real32 const result = factor * multiplier;
    return std::abs(result) > maximum ? std::copysign(maximum, result) : result;
}
} // namespace OSG
