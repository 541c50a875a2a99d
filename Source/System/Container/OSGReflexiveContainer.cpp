#include "OSGReflexiveContainer.h"

#include "OSGFieldContainer.h"

namespace OSG
{
FieldContainerType ReflexiveContainer::_type("ReflexiveContainer", nullptr, "NULL", 0, nullptr,
                                             nullptr, nullptr, nullptr, false, 0, "", "");

ReflexiveContainer::~ReflexiveContainer() = default;
void ReflexiveContainer::onDestroy(UInt32) {}
void ReflexiveContainer::onDestroyAspect(UInt32, UInt32) {}

UInt32 ReflexiveContainer::getNumFields() const { return getType().getNumFieldDescs(); }

FieldDescriptionBase const *ReflexiveContainer::getFieldDescription(UInt32 id) const
{
    return getType().getFieldDesc(id);
}

FieldDescriptionBase const *ReflexiveContainer::getFieldDescription(char const *name) const
{
    return getType().getFieldDesc(name);
}

namespace
{
GetFieldHandlePtr get_handle(FieldDescriptionBase const *description,
                             FieldContainer const &container)
{
    return description != nullptr ? description->createGetHandle(container) : GetFieldHandlePtr();
}

EditFieldHandlePtr edit_handle(FieldDescriptionBase const *description, FieldContainer &container)
{
    return description != nullptr ? description->createEditHandle(container) : EditFieldHandlePtr();
}
} // namespace

GetFieldHandlePtr ReflexiveContainer::getField(UInt32 id) const
{
    return get_handle(getFieldDescription(id), static_cast<FieldContainer const &>(*this));
}

GetFieldHandlePtr ReflexiveContainer::getField(char const *name) const
{
    return get_handle(getFieldDescription(name), static_cast<FieldContainer const &>(*this));
}

EditFieldHandlePtr ReflexiveContainer::editField(UInt32 id)
{
    return edit_handle(getFieldDescription(id), static_cast<FieldContainer &>(*this));
}

EditFieldHandlePtr ReflexiveContainer::editField(char const *name)
{
    return edit_handle(getFieldDescription(name), static_cast<FieldContainer &>(*this));
}
} // namespace OSG
