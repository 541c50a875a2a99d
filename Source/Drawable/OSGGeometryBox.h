#pragma once

#include "OSGBoxVolume.h"
#include "OSGDrawableApi.h"

namespace OSG
{
class Geometry;

/// Extends `box` by the positions of the triangles, lines and points that the geometry delivers:
/// those whose corners all have a position. A position with a NaN is passed over.
OSG_DRAWABLE_API void extend_by_delivered(BoxVolume &box, Geometry const &geometry);
} // namespace OSG
