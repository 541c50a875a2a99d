#include "OSGEyePose.h"

#include "OSGMatrixUtility.h"

namespace OSG
{
using namespace NavigationMath;

EyePose::EyePose(Matrix const &matrix)
    : _from(position_of(matrix))
    , _at(position_of(matrix) - axis_of(matrix, 2))
    , _up(axis_of(matrix, 1))
{
}

void EyePose::set(Pnt3f const &from, Pnt3f const &at, Vec3f const &up)
{
    if(!is_finite(from) || !is_finite(at) || !is_finite(up))
        return;
    _from = from;
    _at = at;
    _up = up;
}

void EyePose::writeMatrix(Matrix &result) const { MatrixLookAt(result, _from, _at, _up); }

void EyePose::move(Vec3f const &by) { set(_from + by, _at + by, _up); }

void EyePose::yaw(Real32 angle) { setAt(rotate_around(_at, _from, _up, angle)); }

void EyePose::pitch(Real32 angle)
{
    Vec3f const side = unit(unit(_at - _from).cross(_up));
    setAt(rotate_around(_at, _from, side, angle));
}

void EyePose::roll(Real32 angle) { setUp(rotation_about(unit(_at - _from), angle) * _up); }
} // namespace OSG
