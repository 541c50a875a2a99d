#pragma once

/// \file
/// Between the view of a host's camera and a WindowView.

#include <optional>

#include "OSGTolvaniteKitApi.h"
#include "OSGWindowView.h"

namespace OSG
{
class Viewport;

/// What a viewport shows. The pixels of the view count from the left top corner of the viewport,
/// so that a host with several viewports subtracts the corner from those of its window.
///
/// A camera does not say what it looks at. `distance` is how far `at` is from the eye: that of the
/// engine, say. Without it, and with 0, which engines give that look at nothing, `at` is 1 away, or
/// as far as an eighth of the eye's largest coordinate, since nearer points would not keep the
/// direction.
///
/// No value for a viewport without pixels, without a camera, with a camera of another projection
/// than perspective or orthographic or with one that shows nothing, for a camera without a beacon
/// and for a beacon whose matrix scales, shears or mirrors, or for a distance below 0 or one that
/// is not finite.
OSG_TOLVANITEKIT_API std::optional<WindowView>
view_of(Viewport const &viewport, std::optional<Real32> distance = std::nullopt);

/// Makes the viewport's camera show a view: the beacon gets the pose (see pose_beacon), and the
/// camera the field of view or the vertical size. Equal values are not written again. The size of
/// the viewport stays.
///
/// False, and nothing changed, where is_view is false for the view, where the camera has another
/// projection than the view, or where its beacon is not there or cannot be moved.
OSG_TOLVANITEKIT_API bool show_view(Viewport const &viewport, WindowView const &view);
/// Gives the camera the field of view or the vertical size alone, for a host whose navigator poses
/// the beacon. False, and nothing changed, for a camera of another projection and for no view.
OSG_TOLVANITEKIT_API bool show_projection(Viewport const &viewport, WindowView const &view);
} // namespace OSG
