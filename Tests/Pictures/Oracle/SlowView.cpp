#include "SlowView.h"

#include <cmath>
#include <numbers>

namespace OSG::Test
{
namespace
{
Vec3d wide(Vec3f const &v) { return Vec3d(v[0], v[1], v[2]); }

Matrix4d viewing_of(ViewSetup const &setup)
{
    Vec3d const eye = wide(setup.from.subZero());
    Vec3d const z = unit(eye - wide(setup.at.subZero()));
    Vec3d const x = unit(wide(setup.up).cross(z));
    Vec3d const y = z.cross(x);
    return Matrix4d(Vec4d(x[0], y[0], z[0], 0.0), Vec4d(x[1], y[1], z[1], 0.0),
                    Vec4d(x[2], y[2], z[2], 0.0),
                    Vec4d(-x.dot(eye), -y.dot(eye), -z.dot(eye), 1.0));
}

Matrix4d projection_of(ViewSetup const &setup)
{
    Real64 const aspect = Real64(setup.width) / setup.height;
    Real64 const near = setup.near;
    Real64 const far = setup.far;
    Matrix4d result;
    if(setup.fov == 0)
    {
        result[0][0] = 2 / (setup.size * aspect);
        result[1][1] = 2.0 / setup.size;
        result[2][2] = -2 / (far - near);
        result[3][2] = -(far + near) / (far - near);
        return result;
    }
    Real64 const scale = 1 / std::tan(setup.fov * std::numbers::pi / 360);
    result[0][0] = scale / aspect;
    result[1][1] = scale;
    result[2] = Vec4d(0.0, 0.0, -(far + near) / (far - near), -1.0);
    result[3] = Vec4d(0.0, 0.0, -2 * far * near / (far - near), 0.0);
    return result;
}
} // namespace

SlowView view_of(ViewSetup const &setup)
{
    SlowView view;
    view.viewing = viewing_of(setup);
    view.projection = projection_of(setup);
    view.width = setup.width;
    view.height = setup.height;
    view.travMask = setup.travMask;
    view.headlight = setup.headlight;
    view.background = setup.background;
    view.sections = setup.sections;
    return view;
}
} // namespace OSG::Test
