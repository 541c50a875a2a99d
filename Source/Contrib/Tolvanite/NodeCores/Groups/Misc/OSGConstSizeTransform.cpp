#include "OSGConstSizeTransform.h"

namespace OSG
{
ConstSizeTransform::~ConstSizeTransform() = default;

void ConstSizeTransform::accumulateMatrix(Matrix &matrix) { matrix.mult(getTransform()); }

void ConstSizeTransform::adjustVolume(Volume &volume)
{
    volume.transform(getMatrix());
    volume.setInfinite(true);
}
} // namespace OSG
