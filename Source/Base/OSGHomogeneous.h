#pragma once

/// \file
/// Points of projective space: x, y, z and a w that divides them.
///
/// A projection with a very distant far plane maps points of that plane to w == 0. Such a point has
/// no coordinates, but it has a direction. The functions here do not divide, so they are right for
/// these points too.

#include "OSGMatrix.h"

namespace OSG
{
using Vec4d = Matrix4d::Column;

/// The image of a point. The fourth number is w; the others are not divided by it.
inline Vec4d homogeneous_image(Matrix4d const &matrix, Pnt3d const &point)
{
    return matrix[0] * point[0] + matrix[1] * point[1] + matrix[2] * point[2] + matrix[3];
}

/// The direction from `from` to `to`, not normalised: (to / to.w - from / from.w) times both w.
/// Where the signs of the w differ, it points through infinity.
inline Vec3d homogeneous_way(Vec4d const &from, Vec4d const &to)
{
    Vec3d const start(from[0], from[1], from[2]);
    return Vec3d(to[0], to[1], to[2]) * from[3] - start * to[3];
}
} // namespace OSG
