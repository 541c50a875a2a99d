#include "OSGWheelSteps.h"

#include <algorithm>
#include <cmath>

namespace OSG
{
Int32 WheelSteps::take(Real64 steps)
{
    constexpr Real64 MostSteps = 100;
    if(!std::isfinite(steps))
        return 0;
    _rest += std::clamp(steps, -MostSteps, MostSteps);
    Real64 const whole = std::trunc(_rest);
    _rest -= whole;
    return static_cast<Int32>(whole);
}
} // namespace OSG
