#pragma once

/// \file
/// Normals that follow their mesh to its place.

#include "OSGContribTolvaniteApi.h"
#include "OSGMatrix.h"

namespace OSG
{
/// Multiplies each of `count` vectors by the linear part of `matrix`, if it is not null, and makes
/// its length 1. Vectors that are shorter than 1e-6 then stay as they are.
OSG_CONTRIBTOLVANITE_API void place_normals(Vec3f *normals, std::size_t count,
                                            Matrix const *matrix);
/// The same to the bit, vector by vector.
OSG_CONTRIBTOLVANITE_API void place_normals_slowly(Vec3f *normals, std::size_t count,
                                                   Matrix const *matrix);
} // namespace OSG
