#pragma once

#include "OSGCameraBase.h"
#include "OSGFrustumVolume.h"
#include "OSGLine.h"

namespace OSG
{
class Viewport;

/// The eye of a view.
///
/// A point of the scene comes to the screen by projection * projectionTranslation * viewing, all
/// for a picture of `width` by `height` pixels:
///
///     world --viewing--> eye (looks along -z, y up) --translation, projection--> normalised
///     coordinates: x and y from -1 to 1 over the viewport (OSGViewarea.h), z from -1 at the near
///     to 1 at the far plane
///
/// View rays and frusta are taken from these same matrices, so that they agree with them whatever
/// a derived camera makes of them: a ray through a pixel meets the points that project to it.
class OSG_WINDOW_API Camera : public CameraBase
{
  public:
    // --- matrices ---
    /// The identity where there is no picture to be had: no pixels, no depth between near and far,
    /// an opening that is none.
    virtual void getProjection(Matrix &result, UInt32 width, UInt32 height) const = 0;
    /// The identity here; for cameras that shift the eye.
    virtual void getProjectionTranslation(Matrix &result, UInt32 width, UInt32 height) const;
    /// World to eye: the inverse of the beacon's matrix, the identity without a beacon. A singular
    /// matrix is logged and gives the identity.
    virtual void getViewing(Matrix &result, UInt32 width, UInt32 height) const;
    /// What the view shows, in world space. A plane that the matrices leave without a direction is
    /// one that culls nothing, as is the far plane where far is some 1e7 times near or more.
    virtual void getFrustum(FrustumVolume &result, UInt32 width, UInt32 height) const;

    // --- the way back ---
    /// The ray through a pixel, (x, y) counted from the window's left top corner, in world space:
    /// it starts on the near plane, its direction has length 1. `length`, where it is not null,
    /// takes the distance to the far plane; where far is so many times near (some 1e7) that the
    /// projection has lost it, it is reckoned from far. False, and nothing written, for a viewport
    /// without pixels and for matrices without an inverse.
    bool calcViewRay(Line &line, Int32 x, Int32 y, Viewport const &port,
                     Real32 *length = nullptr) const;
    /// Normalised coordinates to world, for an eye whose viewing matrix is `viewing`: the inverse
    /// of projection * translation * viewing. Where there is none it is the identity, one warning
    /// is logged and the result is false. In double precision, since the far end of a projection
    /// keeps few digits.
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
