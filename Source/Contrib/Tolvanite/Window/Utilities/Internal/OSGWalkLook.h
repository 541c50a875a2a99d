#pragma once

/// \file
/// How a walking person turns its view. Angles are in radians.

#include "OSGContribTolvaniteApi.h"
#include "OSGVector.h"

namespace OSG
{
namespace WalkLook
{
/// The angle between two vectors, from 0 to pi. It is 0 where a vector has no component beyond
/// 1e-6, and exactly 0 or pi where its cosine is within 1e-6 of 1 or -1. NaN gives NaN.
OSG_CONTRIBTOLVANITE_API Real32 angle_between(Vec3f const &a, Vec3f const &b);

/// The point that is looked at after a turn to the right by `yaw` and then down by `pitch`.
///
/// A view that would be more than 85 degrees above or below the horizon is bent towards it. The
/// bent view keeps its component along `up` and takes the horizontal one of 85 degrees, so that it
/// stays off the vertical, though not at 85 degrees.
OSG_CONTRIBTOLVANITE_API Pnt3f turned(Pnt3f const &from, Pnt3f const &at, Vec3f const &up,
                                      Real32 yaw, Real32 pitch);

/// The pitch that takes the view a part of its way to the horizon: `fraction` 1 for all of it.
OSG_CONTRIBTOLVANITE_API Real32 pitch_to_horizon(Pnt3f const &from, Pnt3f const &at,
                                                 Vec3f const &up, Real32 fraction);
} // namespace WalkLook
} // namespace OSG
