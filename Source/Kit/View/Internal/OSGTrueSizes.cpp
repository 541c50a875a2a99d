#include "OSGTrueSizes.h"

#include "OSGConstantSizeTransform.h"
#include "OSGRenderAction.h"

namespace OSG
{
namespace
{
/// Pixels along the horizontal that a unit across the view measures; 1 where the point is not
/// before the eye.
Real64 pixels_of_unit(DrawEnv const &env, Pnt3d const &point)
{
    Matrix const &projection = env.getCameraProjection();
    Pnt3d const inEye = env.getExactViewing() * point;
    Real64 const w = projection[2][3] * inEye[2] + projection[3][3];
    Real64 const pixels = projection[0][0] / w * env.getPixels().width() / 2;
    return w > 0 && pixels > 0 ? pixels : 1;
}

ActionBase::ResultE enter(NodeCore *, Action *action)
{
    auto &drawing = static_cast<RenderAction &>(*action);
    Matrix const toRoot = drawing.getToRoot();
    Real64 const pixels =
        pixels_of_unit(drawing.getDrawEnv(), Pnt3d(toRoot[3][0], toRoot[3][1], toRoot[3][2]));
    Real32 scale[3];
    for(UInt32 axis = 0; axis < 3; ++axis)
    {
        Vec4f const &column = toRoot[axis];
        Real64 const length = Vec3f(column[0], column[1], column[2]).length();
        scale[axis] = length > 0 ? static_cast<Real32>(1 / (pixels * length)) : 1;
    }
    Matrix matrix;
    matrix.setScale(scale[0], scale[1], scale[2]);
    drawing.pushSpace(matrix);
    return ActionBase::Continue;
}
} // namespace

// The function that leaves the core is its own.
void keep_true_sizes(RenderAction &action)
{
    action.registerEnterFunction(ConstantSizeTransform::getClassType(), &enter,
                                 Action::HandlerPromise::KeepsScene);
}
} // namespace OSG
