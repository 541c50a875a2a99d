#pragma once

#include <chrono>

#include "OSGBaseTypes.h"

namespace OSG
{
/// Steps of steady_ticks() in a second.
constexpr Int64 SteadyTicksPerSecond = std::nano::den;

/// The clock that nobody sets, from some moment on; CLOCK_MONOTONIC where there is one.
inline Int64 steady_ticks()
{
    auto const now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}
} // namespace OSG
