#pragma once

#include "OSGMatrix.h"
#include "OSGWindowApi.h"

namespace OSG
{
class Camera;

/// Moves a camera by the matrix of its beacon, whose core has to be a Transform: afterwards the
/// beacon has `pose`, camera to world, whatever transforms stand above it. An equal matrix is not
/// written again. False, and nothing moved, without a camera or such a beacon, or where the
/// matrices above the beacon have no inverse.
OSG_WINDOW_API bool pose_beacon(Camera const *camera, Matrix const &pose);
} // namespace OSG
