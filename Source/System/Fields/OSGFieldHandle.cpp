#include "OSGFieldHandle.h"

namespace OSG
{
FieldHandle::FieldHandle(FieldDescriptionBase const *description, FieldContainer *container,
                         void const *field)
    : _description(description)
    , _container(container)
    , _field(field)
{
}
FieldHandle::~FieldHandle() = default;
GetFieldHandle::~GetFieldHandle() = default;
EditFieldHandle::~EditFieldHandle() = default;

bool FieldHandle::isPointerField() const { return getType().getClass() != FieldClass::Value; }
bool FieldHandle::isChildField() const { return false; }

void const *FieldHandle::sameField(FieldHandle const &other) const
{
    return other.getType() == getType() ? other._field : nullptr;
}

FieldContainer *GetFieldHandle::getPointer(UInt32) const { return nullptr; }
bool EditFieldHandle::add(FieldContainer *) { return false; }
bool EditFieldHandle::copyValues(GetFieldHandlePtr const &) { return false; }
bool EditFieldHandle::shareValues(GetFieldHandlePtr const &) { return false; }

bool EditFieldHandle::cloneValues(GetFieldHandlePtr const &, ContainerTypeList const &,
                                  ContainerTypeList const &, ContainerGroupList const &,
                                  ContainerGroupList const &)
{
    return false;
}

bool EditFieldHandle::cloneValuesEx(GetFieldHandlePtr const &, NameList const &, NameList const &,
                                    NameList const &, NameList const &)
{
    return false;
}
} // namespace OSG
