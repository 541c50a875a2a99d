#include "OSGInverseTransform.h"

#include "OSGIntersectSpaces.h"
#include "OSGRenderHandlers.h"

namespace OSG
{
InverseTransform::~InverseTransform() = default;

void InverseTransform::accumulateMatrix(Matrix &matrix) { matrix.mult(getRenderedMatrix()); }
void InverseTransform::adjustVolume(Volume &volume) { volume.transform(getRenderedMatrix()); }

namespace
{
void enter_root_space(NodeCore &core, RenderAction &action)
{
    Matrix toSpace;
    toSpace.invertFrom(action.getToRoot());
    set_rendered(static_cast<InverseTransform &>(core), toSpace);
    action.pushSpace(toSpace);
}
} // namespace

void InverseTransform::initMethod(TypeBase::InitPhase phase)
{
    InverseTransformBase::initMethod(phase);
    if(phase != TypeBase::SystemPost)
        return;
    register_intersect_space(getClassType());
    register_render_scope(getClassType(), &enter_root_space, Action::HandlerPromise::Repeats);
}
} // namespace OSG
