#include "OSGMatrixUtility.h"

#include <cmath>

namespace OSG
{
namespace
{
bool is_long(Vec3f const &vector) { return std::isinf(vector.length()); }

/// Normalises the vector. False where it is too short or its length is not finite. Where the square
/// of the length overflows, the division is done in double precision.
bool make_unit(Vec3f &vector)
{
    Real32 const length = vector.length();
    if(!(length >= UnitLengthEpsilon))
        return false;
    if(!is_long(vector))
    {
        vector *= 1.f / length;
        return true;
    }
    Vec3d const wide(vector[0], vector[1], vector[2]);
    Real64 const wideLength = wide.length();
    if(!std::isfinite(wideLength))
        return false;
    vector = Vec3f(wide[0] / wideLength, wide[1] / wideLength, wide[2] / wideLength);
    return true;
}
} // namespace

bool MatrixLookAt(Matrix &result, Pnt3f from, Pnt3f at, Vec3f up)
{
    Vec3f z = from - at;
    if(!make_unit(z))
        return true;
    if(is_long(up) && !make_unit(up)) // the product with a longer vector could overflow
        return true;
    Vec3f x = up.cross(z);
    if(!make_unit(x))
        return true;
    Vec3f const y = z.cross(x);
    result = Matrix(Vec4f(x[0], x[1], x[2], 0.f), Vec4f(y[0], y[1], y[2], 0.f),
                    Vec4f(z[0], z[1], z[2], 0.f), Vec4f(from[0], from[1], from[2], 1.f));
    return false;
}
} // namespace OSG
