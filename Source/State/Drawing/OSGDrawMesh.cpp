#include "OSGDrawMesh.h"

#include "OSGDrawEpochs.h"
#include "OSGGLObjectStore.h"

namespace OSG
{
DrawShape::~DrawShape()
{
    DrawEpochs::noteEndOfShape();
    GLObjectStore::forget(*this);
}
} // namespace OSG
