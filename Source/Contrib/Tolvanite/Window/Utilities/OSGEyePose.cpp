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

// Each step uses the view that the step before it has left. The result is checked once, at the end,
// so that a turn with one bad angle does not turn by its other angles.
void EyePose::turn(Real32 yaw, Real32 pitch, Real32 roll)
{
    Pnt3f const yawed = rotate_around(_at, _from, _up, yaw);
    Pnt3f const pitched = pitch_around(yawed, _from, _up, pitch);
    Vec3f const rolled = rotation_about(unit(pitched - _from), roll) * _up;
    set(_from, pitched, rolled);
}
} // namespace OSG
