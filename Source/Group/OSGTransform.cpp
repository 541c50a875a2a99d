#include "OSGTransform.h"

#include "OSGIntersectSpaces.h"
#include "OSGRenderHandlers.h"

namespace OSG
{
Transform::~Transform() = default;

void Transform::accumulateMatrix(Matrix &matrix) { matrix.mult(getMatrix()); }
void Transform::adjustVolume(Volume &volume) { volume.transform(getMatrix()); }

void Transform::changed(BitVector whichField, UInt32 origin, BitVector details)
{
    if((whichField & MatrixFieldMask) != 0)
        invalidateVolume();
    TransformBase::changed(whichField, origin, details);
}

void Transform::initMethod(TypeBase::InitPhase phase)
{
    TransformBase::initMethod(phase);
    if(phase != TypeBase::SystemPost)
        return;
    register_intersect_space(getClassType());
    register_render_space(getClassType());
}
} // namespace OSG
