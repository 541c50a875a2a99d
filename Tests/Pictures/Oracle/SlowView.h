#pragma once

/// \file
/// How a scene is looked at, in double precision.

#include <vector>

#include "OSGColor.h"
#include "OSGMatrix.h"
#include "OSGPlane.h"

namespace OSG::Test
{
using Vec4d = Vector<Real64, 4>;
using Vec2d = Vector<Real64, 2>;

/// A view as a user says it.
struct ViewSetup
{
    Pnt3f from;
    Pnt3f at;
    Vec3f up{0, 1, 0};
    Real32 fov = 45; ///< vertical, in degrees; 0 for a view without perspective
    Real32 size = 1; ///< units from bottom to top of a view without perspective
    Real32 near = 0.1f;
    Real32 far = 100;
    UInt32 width = 160;
    UInt32 height = 120;
    UInt32 travMask = 0xFFFFFFFF;
    bool headlight = true; ///< one light from the eye; the scene's own lights shine where it is not
    Color3f background{1, 1, 1};
    std::vector<Plane> sections{}; ///< what is in their half spaces is drawn
};

/// A view as a picture is made from it.
struct SlowView
{
    Matrix4d viewing;    ///< world to eye, which looks along -z
    Matrix4d projection; ///< eye to normalised coordinates, -1 to 1
    UInt32 width = 0;
    UInt32 height = 0;
    UInt32 travMask = 0xFFFFFFFF;
    bool headlight = true;
    Color3f background{1, 1, 1};
    std::vector<Plane> sections{};

    bool isPerspective() const { return projection[2][3] != 0; }
};

SlowView view_of(ViewSetup const &setup);

inline Vec4d operator*(Matrix4d const &m, Vec4d const &v)
{
    return m[0] * v[0] + m[1] * v[1] + m[2] * v[2] + m[3] * v[3];
}
inline Vec4d with_w(Pnt3d const &p) { return Vec4d(p[0], p[1], p[2], 1.0); }
inline Vec3d direction_of(Vec4d const &v) { return Vec3d(v[0], v[1], v[2]); }
/// Of length 1; zero stays zero.
inline Vec3d unit(Vec3d const &v)
{
    Real64 const length = v.length();
    return length > 0 ? v / length : v;
}
} // namespace OSG::Test
