#pragma once

#include "OSGNavigationMath.h"

namespace OSG
{
/// The pose of a camera: the point where it stands, the point that it looks at, and the direction
/// that is up. An operation whose result has a component that is not finite changes nothing.
class OSG_CONTRIBTOLVANITE_API EyePose
{
  public:
    /// Stands in the origin, looks along +z, and y is up.
    EyePose() = default;
    /// The pose of a camera matrix, looking at a point one unit in front.
    explicit EyePose(Matrix const &matrix);

    Pnt3f const &from() const { return _from; }
    Pnt3f const &at() const { return _at; }
    Vec3f const &up() const { return _up; }
    void setFrom(Pnt3f const &from) { NavigationMath::assign_finite(_from, from); }
    void setAt(Pnt3f const &at) { NavigationMath::assign_finite(_at, at); }
    void setUp(Vec3f const &up) { NavigationMath::assign_finite(_up, up); }
    /// Takes all three or, if a component is not finite, none.
    void set(Pnt3f const &from, Pnt3f const &at, Vec3f const &up);

    /// Writes the pose as a camera matrix. `result` stays as it was if `from` and `at` coincide or
    /// `up` is parallel to the view.
    void writeMatrix(Matrix &result) const;

    // --- directions of length 1, or shorter where their origin is shorter than 1e-6 ---
    Vec3f backward() const { return NavigationMath::unit(_from - _at); }
    Vec3f left() const { return NavigationMath::unit((_from - _at).cross(_up)); }
    Vec3f upward() const { return NavigationMath::unit(_up); }

    /// Moves `from` and `at`.
    void move(Vec3f const &by);
    /// Turns `at` about `from`, first by `yaw` about `up`, then by `pitch` about the axis to the
    /// right of the view. Then turns `up` by `roll` about the view. Angles are radians,
    /// right-handed about their axis: positive ones turn to the left, up and clockwise.
    void turn(Real32 yaw, Real32 pitch, Real32 roll = 0.f);

  private:
    Pnt3f _from{0.f, 0.f, 0.f};
    Pnt3f _at{0.f, 0.f, 1.f};
    Vec3f _up{0.f, 1.f, 0.f};
};
} // namespace OSG
