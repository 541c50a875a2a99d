#include "OSGBillboard.h"

#include "OSGIntersectSpaces.h"

namespace OSG
{
Billboard::~Billboard() = default;

void Billboard::accumulateMatrix(Matrix &matrix) { matrix.mult(getRenderedMatrix()); }
void Billboard::adjustVolume(Volume &volume) { volume.transform(getRenderedMatrix()); }

void Billboard::initMethod(TypeBase::InitPhase phase)
{
    BillboardBase::initMethod(phase);
    if(phase == TypeBase::SystemPost)
        register_intersect_space(getClassType());
}
} // namespace OSG
