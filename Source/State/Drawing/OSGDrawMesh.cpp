#include "OSGDrawMesh.h"

#include "OSGDrawEpochs.h"

namespace OSG
{
DrawShape::~DrawShape() { DrawEpochs::noteEndOfShape(); }
} // namespace OSG
