#pragma once

#include <optional>

#include "OSGMatrix.h"
#include "OSGTolvaniteKitApi.h"
#include "OSGVector.h"

namespace OSG
{
/// A view of a scene and the window that shows it. Pixels are squares. They are counted from the
/// left top corner of the window: x = 0 is its left edge, x = width its right one.
struct WindowView
{
    Pnt3f from;         ///< the eye, in the coordinates of the scene's root
    Pnt3f at;           ///< a point that appears in the middle of the window
    Vec3f up;           ///< the direction that points upwards in the window
    Real32 fieldOfView; ///< from bottom to top in degrees, between 0 and 180
    UInt32 width;       ///< of the window, in pixels
    UInt32 height;
    /// Units from bottom to top, above 0. Then the view has no perspective, and the field of view
    /// is not looked at.
    std::optional<Real32> orthographicHeight = {};

    /// Compares all numbers exactly.
    friend bool operator==(WindowView const &, WindowView const &) = default;
};

/// False for a view that shows nothing: a window without pixels, a field of view outside 0 to 180
/// degrees, an orthographic height that is not above 0, `at` equal to `from`, `up` of length 0 or
/// parallel to the view, or a number that is not finite.
OSG_TOLVANITEKIT_API bool is_view(WindowView const &view);

/// From the camera's space to that of the scene's root: the eye is the origin, the view looks along
/// -z, and +y points upwards in the window. The identity where is_view is false.
OSG_TOLVANITEKIT_API Matrix camera_of(WindowView const &view);

/// The units from the bottom to the top of the window, of what lies at `depth` in a view. Without
/// perspective it is the same at each depth.
OSG_TOLVANITEKIT_API Real64 shown_height(WindowView const &view, Real64 depth);
} // namespace OSG
