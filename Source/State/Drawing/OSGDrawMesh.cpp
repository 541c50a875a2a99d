#include "OSGDrawMesh.h"

#include "OSGGLObjectStore.h"

namespace OSG
{
DrawShape::~DrawShape() { GLObjectStore::forget(*this); }
} // namespace OSG
