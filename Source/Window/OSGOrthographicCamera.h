#pragma once

#include "OSGOrthographicCameraBase.h"

namespace OSG
{
/// Shows `verticalSize` units from the bottom to the top of the picture at every depth; the width
/// follows the shape of the picture, pixels are squares.
class OSG_WINDOW_API OrthographicCamera : public OrthographicCameraBase
{
  public:
    /// The identity unless verticalSize > 0 and near < far, which may lie behind the eye here.
    void getProjection(Matrix &result, UInt32 width, UInt32 height) const override;

  protected:
    OrthographicCamera() = default;
    OrthographicCamera(OrthographicCamera const &) = default;
    ~OrthographicCamera() override;

    friend Pattern;
};
} // namespace OSG
