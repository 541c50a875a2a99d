#pragma once

#include <algorithm>

#include "OSGBaseTypes.h"

namespace Viewer
{
/// How often something was done and how long it took.
struct Timing
{
    OSG::UInt64 count = 0;
    double seconds = 0;
    double longest = 0;

    void add(double once)
    {
        ++count;
        seconds += once;
        longest = std::max(longest, once);
    }
    double mean() const { return count > 0 ? seconds / static_cast<double>(count) : 0; }
};
} // namespace Viewer
