#pragma once

#include "OSGOrthographicCameraBase.h"

namespace OSG
{
/// A camera that shows `verticalSize` units of the scene from the bottom to the top of the picture,
/// at every depth. Pixels are squares, so the width follows from the shape of the picture.
class OSG_WINDOW_API OrthographicCamera : public OrthographicCameraBase
{
  public:
    /// The identity unless verticalSize > 0 and near < far. Near and far may lie behind the eye.
    void getProjection(Matrix &result, UInt32 width, UInt32 height) const override;

  protected:
    OrthographicCamera() = default;
    OrthographicCamera(OrthographicCamera const &) = default;
    ~OrthographicCamera() override;

    friend Pattern;
};
} // namespace OSG
