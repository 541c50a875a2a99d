#include "OSGMemoryObject.h"

namespace OSG
{
MemoryObject::~MemoryObject() = default;

void MemoryObject::subReferenceUnrecorded()
{
    if(--_references <= 0)
        delete this;
}
} // namespace OSG
