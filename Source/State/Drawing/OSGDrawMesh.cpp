#include "OSGDrawMesh.h"

namespace OSG
{
DrawShape::~DrawShape() = default;
} // namespace OSG
