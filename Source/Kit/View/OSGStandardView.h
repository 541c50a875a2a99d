#pragma once

#include "OSGTolvaniteKitApi.h"
#include "OSGWindowView.h"

namespace OSG
{
/// The axis of a scene that points upwards. The other two are the same in both conventions: seen
/// from the front, x points to the right.
enum class SceneUp : UInt8
{
    Y, ///< the front is seen from +z
    Z  ///< the front is seen from -y
};

/// Where a standard view is seen from. The isometric one is seen from the front, right and top
/// alike.
enum class StandardView : UInt8
{
    Front,
    Back,
    Left,
    Right,
    Top,    ///< the back of the scene is upwards in the window
    Bottom, ///< the front of the scene is upwards in the window
    Isometric
};

/// From `at` towards the eye. Of length 1.
OSG_TOLVANITEKIT_API Vec3f standard_direction(StandardView standard, SceneUp sceneUp);
/// The direction that points upwards in the window.
OSG_TOLVANITEKIT_API Vec3f standard_up(StandardView standard, SceneUp sceneUp);

/// Looks at the same point from the same distance against `back`, which may have any length, with
/// `up` upwards in the window. `view` itself where is_view is false for it or would be for the
/// result.
OSG_TOLVANITEKIT_API WindowView turned_view(WindowView const &view, Vec3f const &back,
                                            Vec3f const &up);
/// Looks at the same point from the same distance in a standard direction. `view` itself where
/// is_view is false for it. fit() then shows the whole scene.
OSG_TOLVANITEKIT_API WindowView standard_view(WindowView const &view, StandardView standard,
                                              SceneUp sceneUp);
} // namespace OSG
