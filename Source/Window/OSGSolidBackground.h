#pragma once

#include "OSGSolidBackgroundBase.h"

namespace OSG
{
/// A background of one colour, black at first.
class OSG_WINDOW_API SolidBackground : public SolidBackgroundBase
{
  public:
    /// Clears colours, with alpha 1, and depths.
    void clear() override;

  protected:
    SolidBackground() = default;
    SolidBackground(SolidBackground const &) = default;
    ~SolidBackground() override;

    friend Pattern;
};
} // namespace OSG
