#include "OSGFieldHandle.h"

namespace OSG
{
FieldHandle::FieldHandle(FieldDescriptionBase const *description, FieldContainer *container)
    : _description(description)
    , _container(container)
{
}
FieldHandle::~FieldHandle() = default;
GetFieldHandle::~GetFieldHandle() = default;
EditFieldHandle::~EditFieldHandle() = default;

bool FieldHandle::isPointerField() const { return getType().getClass() != FieldClass::Value; }
FieldContainer *GetFieldHandle::getPointer(UInt32) const { return nullptr; }
bool EditFieldHandle::add(FieldContainer *) { return false; }
void EditFieldHandle::replacePointer(UInt32, FieldContainer *) {}
} // namespace OSG
