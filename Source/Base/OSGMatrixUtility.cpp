#include "OSGMatrixUtility.h"

namespace OSG
{
namespace
{
/// False where the vector is too short or has no length that is a number.
bool make_unit(Vec3f &vector)
{
    Real32 const length = vector.length();
    if(!(length >= unit_length_epsilon))
        return false;
    vector *= 1.f / length;
    return true;
}
} // namespace

bool MatrixLookAt(Matrix &result, Pnt3f from, Pnt3f at, Vec3f up)
{
    Vec3f z = from - at;
    if(!make_unit(z))
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
