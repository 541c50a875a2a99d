#pragma once

#include "OSGVector.h"

namespace OSG
{
inline Pnt3d wide(Pnt3f const &p) { return Pnt3d(p[0], p[1], p[2]); }
inline Vec3d wide(Vec3f const &v) { return Vec3d(v[0], v[1], v[2]); }
/// Rounds each number.
inline Vec3f narrow(Vec3d const &v) { return Vec3f(v[0], v[1], v[2]); }
} // namespace OSG
