#pragma once

#include "OSGPerspectiveCameraBase.h"

namespace OSG
{
/// A camera whose field of view is `fov` radians from the bottom to the top of the picture. Pixels
/// are squares, so the horizontal field of view follows from the shape of the picture.
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
