#include "OSGInverseTransform.h"

#include "OSGIntersectSpaces.h"

namespace OSG
{
InverseTransform::~InverseTransform() = default;

void InverseTransform::accumulateMatrix(Matrix &matrix) { matrix.mult(getRenderedMatrix()); }
void InverseTransform::adjustVolume(Volume &volume) { volume.transform(getRenderedMatrix()); }

void InverseTransform::initMethod(TypeBase::InitPhase phase)
{
    InverseTransformBase::initMethod(phase);
    if(phase == TypeBase::SystemPost)
        register_intersect_space(getClassType());
}
} // namespace OSG
