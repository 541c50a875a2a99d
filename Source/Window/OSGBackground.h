#pragma once

#include "OSGBackgroundBase.h"

namespace OSG
{
/// What lies behind a scene; base of those that draw something there.
class OSG_WINDOW_API Background : public BackgroundBase
{
  protected:
    Background() = default;
    Background(Background const &) = default;
    ~Background() override;

    friend Pattern;
};
} // namespace OSG
