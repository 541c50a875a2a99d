#include "OSGInverseTransform.h"

namespace OSG
{
InverseTransform::~InverseTransform() = default;

void InverseTransform::accumulateMatrix(Matrix &matrix) { matrix.mult(getRenderedMatrix()); }
void InverseTransform::adjustVolume(Volume &volume) { volume.transform(getRenderedMatrix()); }
} // namespace OSG
