#include "OSGBillboard.h"

namespace OSG
{
Billboard::~Billboard() = default;

void Billboard::accumulateMatrix(Matrix &matrix) { matrix.mult(getRenderedMatrix()); }
void Billboard::adjustVolume(Volume &volume) { volume.transform(getRenderedMatrix()); }
} // namespace OSG
