#pragma once

/// \file
/// Points of projective space: x, y, z and a w that divides them.
///
/// A projection with a far plane very far away sends it to w == 0, to a point without coordinates
/// that still lies in a direction. What is computed here needs no division, so that it holds for
/// such points as for all others.

#include "OSGMatrix.h"

namespace OSG
{
using Vec4d = Matrix4d::Column;

/// The image of a point, w in the fourth place and nothing divided by it.
inline Vec4d homogeneous_image(Matrix4d const &matrix, Pnt3d const &point)
{
    return matrix[0] * point[0] + matrix[1] * point[1] + matrix[2] * point[2] + matrix[3];
}

/// Which way `to` lies from `from`, of no particular length: to / to.w - from / from.w times the
/// product of both w. Where the two lie on different sides of infinity it is the way through it.
inline Vec3d homogeneous_way(Vec4d const &from, Vec4d const &to)
{
    Vec3d const start(from[0], from[1], from[2]);
    return Vec3d(to[0], to[1], to[2]) * from[3] - start * to[3];
}
} // namespace OSG
