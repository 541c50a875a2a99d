#pragma once

/// \file
/// The mathematics that the engines share: numbers in, numbers out, no scene and no events.
///
/// Angles are radians, right-handed about their axis. Vectors are normalised under a guard: one
/// shorter than 1e-6 keeps its length, so that a step along it is a short one and not a wrong one.

#include <cmath>
#include <optional>

#include "OSGContribTolvaniteApi.h"
#include "OSGLine.h"
#include "OSGMatrix.h"

namespace OSG
{
namespace NavigationMath
{
inline bool is_finite(Real32 value) { return std::isfinite(value); }
template <class Tuple>
bool is_finite(Tuple const &values)
{
    bool finite = true;
    for(UInt32 i = 0; i < Tuple::dimension; ++i)
        finite = finite && std::isfinite(values[i]);
    return finite;
}
OSG_CONTRIBTOLVANITE_API bool is_finite(Matrix const &matrix);

/// Takes `value` where it is finite.
template <class Value>
void assign_finite(Value &target, Value const &value)
{
    if(is_finite(value))
        target = value;
}

inline Vec3f unit(Vec3f vector)
{
    vector.normalize();
    return vector;
}

/// Columns of a matrix.
inline Vec3f axis_of(Matrix const &matrix, UInt32 column)
{
    return Vec3f(matrix[column][0], matrix[column][1], matrix[column][2]);
}
inline Pnt3f position_of(Matrix const &matrix)
{
    return Pnt3f(matrix[3][0], matrix[3][1], matrix[3][2]);
}

/// The rotation about an axis of any length through the origin; none about one of 1e-6 or less.
OSG_CONTRIBTOLVANITE_API Matrix rotation_about(Vec3f const &axis, Real32 angle);
/// `point` turned about an axis through `center`.
OSG_CONTRIBTOLVANITE_API Pnt3f rotate_around(Pnt3f const &point, Pnt3f const &center,
                                             Vec3f const &axis, Real32 angle);

/// Height above the picture of a ball of that radius, which near its rim goes over into a
/// hyperbola, so that the whole picture can be grabbed.
OSG_CONTRIBTOLVANITE_API Real32 project_to_sphere(Real32 radius, Real32 x, Real32 y);

/// A turn of the ball.
struct Turn
{
    Vec3f axis;   ///< in the axes of the picture, not normalised
    Real32 angle; ///< from 0 to pi
};
/// What turns the ball when it is dragged from one place of the picture to another, both in
/// normalised coordinates. Nothing where neither coordinate differs by more than 1e-6.
OSG_CONTRIBTOLVANITE_API std::optional<Turn> drag_on_sphere(Real32 radius, Real32 fromX,
                                                            Real32 fromY, Real32 toX, Real32 toY);
/// What a pan holds: a point, and the plane through it along which it is moved.
struct Grip
{
    Pnt3f point;
    Vec3f normal; ///< of any length; zero holds nothing
};
/// From the far side of the screen's middle towards the eye, for a matrix from normalised
/// coordinates to the world: the direction that a view is panned across. Of length 1.
OSG_CONTRIBTOLVANITE_API Vec3f screen_axis(Matrix4d const &screenToWorld);
/// Where a ray crosses the plane through the world's origin with that normal; no finite point where
/// it runs along the plane.
OSG_CONTRIBTOLVANITE_API Pnt3f on_plane_through_origin(Line const &ray, Vec3f const &normal);
/// How far a camera has to move along its own x and y axes for the grip to come under a place of
/// the screen in normalised coordinates. `viewing` is the inverse of `camera`, `screenToWorld` goes
/// with both. Nothing where that is no finite way.
OSG_CONTRIBTOLVANITE_API std::optional<Vec2f> pan_way(Matrix4d const &screenToWorld,
                                                      Matrix const &camera, Matrix const &viewing,
                                                      Grip const &grip, Real32 normX, Real32 normY);
} // namespace NavigationMath
} // namespace OSG
