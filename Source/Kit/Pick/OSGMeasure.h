#pragma once

/// \file
/// Numbers between points that a user has picked.

#include <optional>

#include "OSGTolvaniteKitApi.h"
#include "OSGVector.h"

namespace OSG
{
/// The distance of two points, computed in double precision. NaN or infinite where a coordinate is
/// not finite.
OSG_TOLVANITEKIT_API Real64 distance_between(Pnt3f const &a, Pnt3f const &b);

/// The angle at `middle` between the ways to `a` and to `b`, in degrees from 0 to 180. Points on
/// one line give exactly 0 or 180. No value where `a` or `b` lies at the middle, and where a
/// coordinate is not finite.
OSG_TOLVANITEKIT_API std::optional<Real64> angle_between(Pnt3f const &a, Pnt3f const &middle,
                                                         Pnt3f const &b);
} // namespace OSG
