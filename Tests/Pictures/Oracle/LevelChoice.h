#pragma once

/// \file
/// Which of its children a level of detail shows.

#include <span>

#include "OSGBoxVolume.h"
#include "SlowView.h"

namespace OSG::Test
{
/// By the distance of the eye from `center`, which is in the space that `toEye` leads from. The
/// ranges ascend.
UInt32 level_by_distance(Pnt3f const &center, std::span<Real32 const> ranges,
                         Matrix4d const &toEye);
/// By the share of the picture that the box takes. The coverages descend. 1 is the share of a box
/// that is infinite or reaches before the near plane.
UInt32 level_by_coverage(BoxVolume const &box, std::span<Real32 const> coverages,
                         Matrix4d const &toEye, SlowView const &view);
} // namespace OSG::Test
