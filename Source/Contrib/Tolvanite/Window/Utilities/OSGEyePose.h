#pragma once

#include "OSGNavigationMath.h"

namespace OSG
{
/// A camera as the point that it stands on, the one that it looks at, and what is upwards. Each
/// operation leaves the pose as it is where the result would not be finite.
class OSG_CONTRIBTOLVANITE_API EyePose
{
  public:
    /// In the origin, looking along +z, y up.
    EyePose() = default;
    /// The pose of a camera matrix, looking at a point one unit in front.
    explicit EyePose(Matrix const &matrix);

    Pnt3f const &from() const { return _from; }
    Pnt3f const &at() const { return _at; }
    Vec3f const &up() const { return _up; }
    void setFrom(Pnt3f const &from) { NavigationMath::assign_finite(_from, from); }
    void setAt(Pnt3f const &at) { NavigationMath::assign_finite(_at, at); }
    void setUp(Vec3f const &up) { NavigationMath::assign_finite(_up, up); }
    /// All three or none.
    void set(Pnt3f const &from, Pnt3f const &at, Vec3f const &up);

    /// As a camera matrix; where there is none, `result` stays as it was.
    void writeMatrix(Matrix &result) const;

    // --- directions, normalised under the guard ---
    Vec3f backward() const { return NavigationMath::unit(_from - _at); }
    Vec3f left() const { return NavigationMath::unit((_from - _at).cross(_up)); }
    Vec3f upward() const { return NavigationMath::unit(_up); }

    /// Moves eye and point.
    void move(Vec3f const &by);
    /// Turn the point about the eye: about `up`, and about the axis to the right.
    void yaw(Real32 angle);
    void pitch(Real32 angle);
    /// Turns `up` about the view.
    void roll(Real32 angle);

  private:
    Pnt3f _from{0.f, 0.f, 0.f};
    Pnt3f _at{0.f, 0.f, 1.f};
    Vec3f _up{0.f, 1.f, 0.f};
};
} // namespace OSG
