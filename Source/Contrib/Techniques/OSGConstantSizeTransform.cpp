#include "OSGConstantSizeTransform.h"

#include "OSGIntersectSpaces.h"

namespace OSG
{
ConstantSizeTransform::~ConstantSizeTransform() = default;

void ConstantSizeTransform::accumulateMatrix(Matrix &matrix) { matrix.mult(getRenderedMatrix()); }
void ConstantSizeTransform::adjustVolume(Volume &volume) { volume.transform(getRenderedMatrix()); }

void ConstantSizeTransform::initMethod(TypeBase::InitPhase phase)
{
    ConstantSizeTransformBase::initMethod(phase);
    if(phase == TypeBase::SystemPost)
        register_intersect_space(getClassType());
}
} // namespace OSG
