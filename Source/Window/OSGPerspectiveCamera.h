#pragma once

#include "OSGPerspectiveCameraBase.h"

namespace OSG
{
/// Opens by `fov` radians from the bottom to the top of the picture; the width follows the shape
/// of the picture, pixels are squares.
class OSG_WINDOW_API PerspectiveCamera : public PerspectiveCameraBase
{
  public:
    /// The identity unless 0 < fov < pi and 0 < near < far.
    void getProjection(Matrix &result, UInt32 width, UInt32 height) const override;

  protected:
    PerspectiveCamera() = default;
    PerspectiveCamera(PerspectiveCamera const &) = default;
    ~PerspectiveCamera() override;

    friend Pattern;
};
} // namespace OSG
