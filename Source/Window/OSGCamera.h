#pragma once

#include "OSGCameraBase.h"
#include "OSGFrustumVolume.h"
#include "OSGLine.h"

namespace OSG
{
class Viewport;

/// The eye of a view.
///
/// The product projection * projectionTranslation * viewing takes a point of the scene to the
/// screen. The matrices are for a picture of `width` by `height` pixels:
///
///     world --viewing--> eye (looks along -z, y up) --translation, projection--> normalised
///     coordinates: x and y from -1 to 1 over the viewport (OSGViewarea.h), z from -1 at the near
///     to 1 at the far plane
///
/// View rays and frusta are computed from these matrices. They therefore agree with the matrices of
/// any derived camera: a ray through a pixel meets the points that project to that pixel.
class OSG_WINDOW_API Camera : public CameraBase
{
  public:
    // --- matrices ---
    /// Eye to normalised coordinates. The identity if there are no pixels, if near and far enclose
    /// no depth, or if the opening of the camera is not valid.
    virtual void getProjection(Matrix &result, UInt32 width, UInt32 height) const = 0;
    /// The identity in this class. Cameras that shift the eye override it.
    virtual void getProjectionTranslation(Matrix &result, UInt32 width, UInt32 height) const;
    /// World to eye: the inverse of the beacon's matrix. The identity without a beacon, and for a
    /// singular matrix, which is logged.
    virtual void getViewing(Matrix &result, UInt32 width, UInt32 height) const;
    /// The volume that the view shows, in world space. A plane for which the matrices give no
    /// direction culls nothing. This is so for the far plane if far is about 1e7 times near or
    /// more.
    virtual void getFrustum(FrustumVolume &result, UInt32 width, UInt32 height) const;

    // --- from the screen to the world ---
    /// The ray in world space through the pixel (x, y), counted from the window's left top corner.
    /// It starts on the near plane and its direction has length 1. If `length` is not null, it
    /// receives the distance to the far plane along the ray. If far is about 1e7 times near or
    /// more, the projection no longer holds the far plane, and the distance is computed from the
    /// field `far`. For a viewport without pixels, and for matrices without an inverse, the result
    /// is false and nothing is written.
    bool calcViewRay(Line &line, Int32 x, Int32 y, Viewport const &port,
                     Real32 *length = nullptr) const;
    /// Normalised coordinates to world, for an eye whose viewing matrix is `viewing`: the inverse
    /// of projection * translation * viewing. If there is no inverse, the matrix is the identity,
    /// one warning is logged and the result is false. The matrix is in double precision because
    /// single precision keeps few digits of depths near the far plane.
    bool calcScreenToWorld(Matrix4d &result, Matrix const &viewing, UInt32 width,
                           UInt32 height) const;

  protected:
    Camera() = default;
    Camera(Camera const &) = default;
    ~Camera() override;

    friend Pattern;

  private:
    Matrix4d worldToScreen(Matrix const &viewing, UInt32 width, UInt32 height) const;
};
} // namespace OSG
