#pragma once

#include "OSGBackgroundBase.h"

namespace OSG
{
/// What a view shows where its scene shows nothing. This class leaves what is there, depths
/// included: the host clears, or several views are drawn over one another.
class OSG_WINDOW_API Background : public BackgroundBase
{
  public:
    /// Draws the background over the area that the scissor of OpenGL leaves. The context is current
    /// and in OpenGL's initial state but for viewport and scissor.
    virtual void clear();

  protected:
    Background() = default;
    Background(Background const &) = default;
    ~Background() override;

    friend Pattern;
};
} // namespace OSG
