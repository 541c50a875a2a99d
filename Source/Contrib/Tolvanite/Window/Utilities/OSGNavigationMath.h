#pragma once

/// \file
/// The mathematics that the engines share. It knows neither scenes nor events.
///
/// Angles are in radians and right-handed about their axis. A vector that is shorter than 1e-6 is
/// not normalised but keeps its length. Its direction is mostly rounding error, and this way a step
/// along it stays small.

#include <optional>

#include "OSGContribTolvaniteApi.h"
#include "OSGFinite.h"
#include "OSGLine.h"
#include "OSGMatrix.h"

namespace OSG
{
namespace NavigationMath
{
/// Assigns `value` to `target` if it is finite.
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

/// The first three components of a column of a matrix.
inline Vec3f axis_of(Matrix const &matrix, UInt32 column)
{
    return Vec3f(matrix[column][0], matrix[column][1], matrix[column][2]);
}
inline Pnt3f position_of(Matrix const &matrix)
{
    return Pnt3f(matrix[3][0], matrix[3][1], matrix[3][2]);
}

/// The rotation about an axis through the origin. The axis may have any length; for a length of
/// 1e-6 or less the result is the identity.
OSG_CONTRIBTOLVANITE_API Matrix rotation_about(Vec3f const &axis, Real32 angle);
/// `point` rotated about an axis through `center`.
OSG_CONTRIBTOLVANITE_API Pnt3f rotate_around(Pnt3f const &point, Pnt3f const &center,
                                             Vec3f const &axis, Real32 angle);
/// `at` rotated about `from` by `angle` around the axis to the right of the view: positive angles
/// look up.
OSG_CONTRIBTOLVANITE_API Pnt3f pitch_around(Pnt3f const &at, Pnt3f const &from, Vec3f const &up,
                                            Real32 angle);

/// The height of a ball above the place (x, y) of the picture. The ball is a sphere of that radius
/// around the middle of the picture. Farther out than radius / sqrt(2) its surface continues as a
/// hyperbola, so that there is a height above every place of the picture.
OSG_CONTRIBTOLVANITE_API Real32 project_to_sphere(Real32 radius, Real32 x, Real32 y);

/// A rotation of the ball.
struct Turn
{
    Vec3f axis;   ///< x to the right, y up, z out of the picture; of any length
    Real32 angle; ///< from 0 to pi
};
/// The turn that moves the camera when the ball is dragged from one place of the picture to
/// another. Places are in normalised coordinates. No value if neither coordinate differs by more
/// than 1e-6.
OSG_CONTRIBTOLVANITE_API std::optional<Turn> drag_on_sphere(Real32 radius, Real32 fromX,
                                                            Real32 fromY, Real32 toX, Real32 toY);
/// The point that a pan has grabbed, and the normal of the plane in which the pan moves it.
struct Grip
{
    Pnt3f point;
    Vec3f normal; ///< of any length; a normal of length 0 means that nothing is grabbed
};
/// The direction in world space from the far end of the middle of the screen towards the eye, with
/// length 1. `screenToWorld` takes normalised coordinates to the world.
OSG_CONTRIBTOLVANITE_API Vec3f screen_axis(Matrix4d const &screenToWorld);
/// The point where a ray crosses the plane through the world's origin with that normal. The point
/// is not finite if the ray is parallel to the plane.
OSG_CONTRIBTOLVANITE_API Pnt3f on_plane_through_origin(Line const &ray, Vec3f const &normal);
/// How far a camera has to move along its own x and y axes so that the grabbed point comes under
/// the place (normX, normY) of the screen, in normalised coordinates. `camera` is the matrix of the
/// camera, `viewing` is its inverse, and `screenToWorld` takes normalised coordinates to the world
/// for this camera. No value if the result is not finite.
OSG_CONTRIBTOLVANITE_API std::optional<Vec2f> pan_way(Matrix4d const &screenToWorld,
                                                      Matrix const &camera, Matrix const &viewing,
                                                      Grip const &grip, Real32 normX, Real32 normY);
} // namespace NavigationMath
} // namespace OSG
