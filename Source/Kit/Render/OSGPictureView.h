#pragma once

/// \file
/// How a picture looks at a scene.

#include <optional>

#include "OSGMatrix.h"
#include "OSGTolvaniteKitApi.h"
#include "OSGViewDepths.h"

namespace OSG
{
struct SceneBounds;

/// The angle from the bottom to the top of a picture, in degrees, if nobody says otherwise.
inline constexpr Real32 DefaultFieldOfView = 45;

/// What a picture shows. Pixels are squares.
struct PictureView
{
    Matrix camera = {};                            ///< from the camera's space to that of the root
    ViewDepths depths = {};                        ///< see picture_depths
    Real32 fieldOfView = DefaultFieldOfView;       ///< from bottom to top, in degrees
    std::optional<Real32> orthographicHeight = {}; ///< units from bottom to top, for no angle
};

/// The camera from which all of `bounds` is in the picture: it looks from (1, 1, 1) at the middle
/// of the box, with +y upwards, and sees the ball around the box under DefaultFieldOfView, or under
/// the angle from left to right where the picture is higher than wide. A box without extent counts
/// as a ball of radius 1, bounds without a box as the ball of radius 1 around (0, 0, 0).
OSG_TOLVANITEKIT_API Matrix fitted_camera(SceneBounds const &bounds, UInt32 width, UInt32 height);

/// The planes of a camera that draws the scene: depths_in_view, with a tenth added to the far side,
/// because a depth buffer drops what lies in its farthest value. The sides for a scene without a
/// box stay as they are.
OSG_TOLVANITEKIT_API ViewDepths picture_depths(SceneBounds const &bounds, Matrix const &camera);

/// The view of that camera, with these planes, under DefaultFieldOfView.
OSG_TOLVANITEKIT_API PictureView fitted_view(SceneBounds const &bounds, UInt32 width,
                                             UInt32 height);
} // namespace OSG
