#pragma once

namespace Viewer
{
/// Whole steps of a wheel that turns by fractions of them.
class WheelSteps
{
  public:
    /// The steps that are whole with what was left before; the rest is kept. A call counts for 100
    /// steps at most, and one with a number that is not finite for none.
    int take(double steps);

  private:
    double _rest = 0;
};
} // namespace Viewer
