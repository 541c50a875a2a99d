#include "OSGBillboard.h"

#include <cmath>

#include "OSGIntersectSpaces.h"
#include "OSGRenderHandlers.h"

namespace OSG
{
Billboard::~Billboard() = default;

void Billboard::accumulateMatrix(Matrix &matrix) { matrix.mult(getRenderedMatrix()); }
void Billboard::adjustVolume(Volume &volume) { volume.transform(getRenderedMatrix()); }

namespace
{
using Vec3d = Vector<Real64, 3>;

Vec3d column(Matrix const &matrix, std::size_t c)
{
    return Vec3d(matrix[c][0], matrix[c][1], matrix[c][2]);
}

// Where the eye looks straight along the camera's y axis, the view direction takes its place.
Vec3d perpendicular_up(Vec3d const &towards)
{
    for(Vec3d const &up : {Vec3d(0., 1., 0.), Vec3d(0., 0., -1.)})
    {
        Vec3d const across = up - towards * (up * towards);
        if(across.length() > 1e-6)
            return across * (1 / across.length());
    }
    return Vec3d(0., 1., 0.);
}

// Everything in eye coordinates: the eye is the origin and looks along -z.
void face_viewer(NodeCore &core, RenderAction &action)
{
    Matrix const &toEye = action.getActivePartition()->getCurrentMatrix().matrix;
    Vec3d towards = column(toEye, 3) * -1.;
    if(action.getDrawEnv().isOrthographic() || !(towards.length() > 0))
        towards = Vec3d(0., 0., 1.);
    towards = towards * (1 / towards.length());
    Vec3d const up = perpendicular_up(towards);
    Vec3d const axes[3] = {up.cross(towards), up, towards};
    Matrix4d turned(toEye);
    for(std::size_t c = 0; c < 3; ++c)
    {
        Real64 const length = column(toEye, c).length();
        for(std::size_t r = 0; r < 3; ++r)
            turned[c][r] = axes[c][r] * length;
    }
    Matrix4d toLocal;
    Matrix const matrix(toLocal.invertFrom(Matrix4d(toEye)) ? toLocal * turned : Matrix4d());
    set_rendered(static_cast<Billboard &>(core), matrix);
    action.pushSpace(matrix);
}
} // namespace

void Billboard::initMethod(TypeBase::InitPhase phase)
{
    BillboardBase::initMethod(phase);
    if(phase != TypeBase::SystemPost)
        return;
    register_intersect_space(getClassType());
    register_render_scope(getClassType(), &face_viewer, Action::HandlerPromise::KeepsScene);
}
} // namespace OSG
