#pragma once

#include <optional>

#include "OSGBaseTypes.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// Counts ticks of equal length in the time that a host tells once per frame.
///
/// Fractions of ticks are kept, so that ticks do not run late over many frames. A host that stands
/// still, in a dialog say, does not catch up: of the time between two calls at most a second
/// counts. Time that runs backwards, or that is NaN or infinite, brings no tick; counting goes on
/// from the next one.
class OSG_TOLVANITEKIT_API TickClock
{
  public:
    /// In seconds.
    static constexpr Real64 LongestStep = 1;

    /// The next call of take() begins to count.
    void restart();
    /// The ticks since the last call. `seconds` counts from a fixed moment. With a tick time of 0
    /// each call is one tick, the first one excepted.
    UInt32 take(Real64 seconds, UInt32 tickMilliseconds);

  private:
    std::optional<Real64> _last;
    Real64 _rest = 0; // in milliseconds
};
} // namespace OSG
