#pragma once

#include "OSGBaseTypes.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// Whole steps of a wheel that turns by fractions of them.
class OSG_TOLVANITEKIT_API WheelSteps
{
  public:
    /// The steps that are whole with what was left before; the rest is kept. A call counts for 100
    /// steps at most, and one with a number that is not finite for none.
    Int32 take(Real64 steps);

  private:
    Real64 _rest = 0;
};
} // namespace OSG
