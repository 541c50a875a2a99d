#include "OSGFieldDescription.h"

#include "OSGFieldHandle.h"

namespace OSG
{
FieldDescriptionBase::FieldDescriptionBase(FieldType const &type, char const *name,
                                           char const *documentation, UInt32 id, BitVector mask,
                                           Visibility visibility, UInt32 flags, GetHandle getHandle,
                                           EditHandle editHandle)
    : _type(type)
    , _name(name)
    , _documentation(documentation)
    , _id(id)
    , _mask(mask)
    , _visibility(visibility)
    , _flags(flags)
    , _getHandle(getHandle)
    , _editHandle(editHandle)
{}

FieldDescriptionBase::~FieldDescriptionBase() = default;

GetFieldHandlePtr FieldDescriptionBase::createGetHandle(FieldContainer const &container) const
{
    return _getHandle != nullptr ? _getHandle(container) : GetFieldHandlePtr();
}

EditFieldHandlePtr FieldDescriptionBase::createEditHandle(FieldContainer &container) const
{
    return _editHandle != nullptr ? _editHandle(container) : EditFieldHandlePtr();
}
} // namespace OSG
