#include "OSGTickClock.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace OSG
{
void TickClock::restart()
{
    _last.reset();
    _rest = 0;
}

UInt32 TickClock::take(Real64 seconds, UInt32 tickMilliseconds)
{
    if(!std::isfinite(seconds))
        return 0;
    std::optional<Real64> const before = std::exchange(_last, seconds);
    if(!before)
        return 0;
    if(tickMilliseconds == 0)
        return 1;
    _rest += std::clamp(seconds - *before, 0., LongestStep) * 1000;
    Real64 const ticks = std::floor(_rest / tickMilliseconds);
    _rest -= ticks * tickMilliseconds;
    return static_cast<UInt32>(ticks);
}
} // namespace OSG
