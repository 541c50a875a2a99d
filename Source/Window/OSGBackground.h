#pragma once

#include "OSGBackgroundBase.h"

namespace OSG
{
/// The background of a view, which is drawn before the scene. This class draws nothing and is the
/// base of backgrounds that do.
class OSG_WINDOW_API Background : public BackgroundBase
{
  protected:
    Background() = default;
    Background(Background const &) = default;
    ~Background() override;

    friend Pattern;
};
} // namespace OSG
