#include "FacingMatrices.h"

namespace OSG::Test
{
namespace
{
Vec4d as_direction(Vec3d const &v) { return Vec4d(v[0], v[1], v[2], 0.0); }

Matrix4d inverse_of(Matrix4d const &matrix)
{
    Matrix4d inverse;
    inverse.invertFrom(matrix);
    return inverse;
}

// Columns of normalised coordinates, which span 2, that a unit beside `origin` in eye space takes,
// times the pixels of the picture's width.
Real64 width_of_unit(Vec4d const &origin, SlowView const &view)
{
    if(!view.isPerspective())
        return view.projection[0][0] * view.width;
    Vec3d const sight = direction_of(origin) * -1.0;
    Vec3d const aside = unit(unit(sight.cross(Vec3d(1.0, 0.0, 0.0))).cross(unit(sight)));
    auto const onScreen = [&](Vec4d const &point)
    {
        Vec4d const clip = view.projection * point;
        return direction_of(clip) / clip[3];
    };
    return (onScreen(origin + as_direction(aside)) - onScreen(origin)).length() * view.width;
}
} // namespace

Matrix4d billboard_matrix(Matrix4d const &toEye, SlowView const &view)
{
    Vec3d const origin = direction_of(toEye[3]);
    Vec3d const z = view.isPerspective() ? unit(origin * -1.0) : Vec3d(0.0, 0.0, 1.0);
    Vec3d const x = unit(Vec3d(0.0, 1.0, 0.0).cross(z));
    Vec3d const y = z.cross(x);
    return Matrix4d(as_direction(x * direction_of(toEye[0]).length()),
                    as_direction(y * direction_of(toEye[1]).length()),
                    as_direction(z * direction_of(toEye[2]).length()), toEye[3]);
}

Matrix4d pixel_sized_matrix(Matrix4d const &toEye, SlowView const &view)
{
    Real64 const scale = 2 / width_of_unit(toEye[3], view);
    return Matrix4d(as_direction(unit(direction_of(toEye[0])) * scale),
                    as_direction(unit(direction_of(toEye[1])) * scale),
                    as_direction(unit(direction_of(toEye[2])) * scale), toEye[3]);
}

Matrix4d constant_sized_matrix(Matrix4d const &toEye, Matrix4d const &own, Real64 distance,
                               SlowView const &view)
{
    Matrix4d const inWorld = inverse_of(view.viewing) * toEye * own;
    Real64 const size = width_of_unit(view.viewing * inWorld[3], view);
    Matrix4d scale;
    scale.setScale(distance / size);
    return toEye * inWorld * scale;
}
} // namespace OSG::Test
