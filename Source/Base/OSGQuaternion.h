#pragma once

/// \file
/// A rotation as a unit quaternion (x, y, z, w). Angles are in radians, right-handed about the
/// axis.

#include <cmath>

#include "OSGVector.h"

namespace OSG
{
class Quaternion
{
  public:
    /// The identity (0, 0, 0, 1).
    constexpr Quaternion() = default;
    /// Takes four numbers without normalising them.
    constexpr Quaternion(Real32 x, Real32 y, Real32 z, Real32 w)
        : _values{x, y, z, w}
    {
    }
    /// The rotation by `angle` about `axis`; see setValueAsAxisRad.
    Quaternion(Vec3f const &axis, Real32 angle) { setValueAsAxisRad(axis, angle); }

    constexpr Real32 x() const { return _values[0]; }
    constexpr Real32 y() const { return _values[1]; }
    constexpr Real32 z() const { return _values[2]; }
    constexpr Real32 w() const { return _values[3]; }
    constexpr Real32 const &operator[](std::size_t i) const { return _values[i]; }
    constexpr Real32 const *values() const { return _values; }

    /// The axis may have any length. The result is the identity where the length is 1e-6 or less,
    /// or NaN.
    void setValueAsAxisRad(Vec3f const &axis, Real32 angle)
    {
        Real32 const length = axis.length();
        if(!(length > UnitLengthEpsilon))
        {
            *this = Quaternion();
            return;
        }
        Real32 const sine = std::sin(angle / 2.f);
        *this = Quaternion(axis[0] / length * sine, axis[1] / length * sine,
                           axis[2] / length * sine, std::cos(angle / 2.f));
    }

    /// The rotation `b` followed by `a`: the matrix of the product is the matrix of `a` times that
    /// of `b`.
    friend constexpr Quaternion operator*(Quaternion const &a, Quaternion const &b)
    {
        return Quaternion(a.w() * b.x() + a.x() * b.w() + a.y() * b.z() - a.z() * b.y(),
                          a.w() * b.y() + a.y() * b.w() + a.z() * b.x() - a.x() * b.z(),
                          a.w() * b.z() + a.z() * b.w() + a.x() * b.y() - a.y() * b.x(),
                          a.w() * b.w() - a.x() * b.x() - a.y() * b.y() - a.z() * b.z());
    }
    /// The inverse rotation. The quaternion has to be of unit length.
    constexpr Quaternion inverse() const { return Quaternion(-x(), -y(), -z(), w()); }

    /// Compares all numbers exactly.
    friend constexpr bool operator==(Quaternion const &a, Quaternion const &b)
    {
        return a[0] == b[0] && a[1] == b[1] && a[2] == b[2] && a[3] == b[3];
    }

  private:
    Real32 _values[4] = {0.f, 0.f, 0.f, 1.f};
};
} // namespace OSG
