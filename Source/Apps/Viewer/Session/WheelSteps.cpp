#include "WheelSteps.h"

#include <algorithm>
#include <cmath>

namespace Viewer
{
int WheelSteps::take(double steps)
{
    constexpr double MostSteps = 100;
    if(!std::isfinite(steps))
        return 0;
    _rest += std::clamp(steps, -MostSteps, MostSteps);
    double const whole = std::trunc(_rest);
    _rest -= whole;
    return static_cast<int>(whole);
}
} // namespace Viewer
