#include "OSGConstantSizeTransform.h"

#include "OSGIntersectSpaces.h"
#include "OSGRenderHandlers.h"
#include "OSGScreenSize.h"

namespace OSG
{
ConstantSizeTransform::~ConstantSizeTransform() = default;

void ConstantSizeTransform::accumulateMatrix(Matrix &matrix) { matrix.mult(getRenderedMatrix()); }
void ConstantSizeTransform::adjustVolume(Volume &volume) { volume.setInfinite(true); }

namespace
{
// Half of the size on the screen is the number of pixels of a unit.
void keep_size(NodeCore &core, RenderAction &action)
{
    Matrix const toWorld = action.getToRoot();
    Real32 const pixels = unit_on_screen(action.getDrawEnv(), toWorld * Pnt3f(0, 0, 0)) / 2;
    Real32 scale[3];
    for(UInt32 axis = 0; axis < 3; ++axis)
    {
        Vec4f const &column = toWorld[axis];
        Real32 const length = Vec3f(column[0], column[1], column[2]).length();
        scale[axis] = length > 0 ? 1 / (pixels * length) : 1;
    }
    Matrix matrix;
    matrix.setScale(scale[0], scale[1], scale[2]);
    static_cast<ConstantSizeTransform &>(core).setRenderedMatrix(matrix);
    action.pushSpace(matrix);
}
} // namespace

void ConstantSizeTransform::initMethod(TypeBase::InitPhase phase)
{
    ConstantSizeTransformBase::initMethod(phase);
    if(phase != TypeBase::SystemPost)
        return;
    register_intersect_space(getClassType());
    register_render_scope(getClassType(), &keep_size, Action::HandlerPromise::KeepsScene);
}
} // namespace OSG
