#include "OSGConstantSizeTransform.h"

namespace OSG
{
ConstantSizeTransform::~ConstantSizeTransform() = default;

void ConstantSizeTransform::accumulateMatrix(Matrix &matrix) { matrix.mult(getRenderedMatrix()); }
void ConstantSizeTransform::adjustVolume(Volume &volume) { volume.transform(getRenderedMatrix()); }
} // namespace OSG
