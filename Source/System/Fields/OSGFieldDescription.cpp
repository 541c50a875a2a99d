#include "OSGFieldDescription.h"

#include "OSGFieldHandle.h"
#include "OSGLog.h"

namespace OSG
{
FieldDescriptionBase::FieldDescriptionBase(FieldType const &type, char const *name,
                                           char const *documentation, UInt32 id, BitVector mask,
                                           Visibility visibility, UInt32 flags, GetHandle getHandle,
                                           EditHandle editHandle,
                                           PointerFieldAccess const *pointers)
    : _type(type)
    , _name(name)
    , _documentation(documentation)
    , _id(id)
    , _mask(mask)
    , _visibility(visibility)
    , _flags(flags)
    , _getHandle(getHandle)
    , _editHandle(editHandle)
    , _pointers(pointers)
{
}

FieldDescriptionBase::~FieldDescriptionBase() = default;

namespace
{
bool is_name(char const *name) { return name != nullptr && *name != '\0'; }
} // namespace

bool FieldDescriptionBase::isValid() const { return is_name(_name); }

FieldDescriptionBase *FieldDescriptionBase::createFieldDescription(
    FieldType const &type, char const *name, char const *documentation, UInt32 id, BitVector mask,
    Visibility visibility, UInt32 flags, GetHandle getHandle, EditHandle editHandle,
    PointerFieldAccess const *pointers)
{
    if(!is_name(name))
    {
        OSG_LOG_WARNING("createFieldDescription no fieldname given");
        return nullptr;
    }
    return new FieldDescriptionBase(type, name, documentation, id, mask, visibility, flags,
                                    getHandle, editHandle, pointers);
}

FieldDescriptionBase *FieldDescriptionBase::createFieldDescriptionIdx(
    FieldType const &type, char const *name, char const *documentation, UInt32 id,
    Visibility visibility, UInt32 flags, GetHandle getHandle, EditHandle editHandle,
    PointerFieldAccess const *pointers)
{
    if(!is_name(name))
    {
        OSG_LOG_WARNING("createFieldDescriptionIdx no fieldname given");
        return nullptr;
    }
    return new FieldDescriptionBase(type, name, documentation, id, BitVector(1) << id, visibility,
                                    flags, getHandle, editHandle, pointers);
}

GetFieldHandlePtr FieldDescriptionBase::createGetHandle(FieldContainer const &container) const
{
    return _getHandle != nullptr ? _getHandle(container) : GetFieldHandlePtr();
}

EditFieldHandlePtr FieldDescriptionBase::createEditHandle(FieldContainer &container) const
{
    return _editHandle != nullptr ? _editHandle(container) : EditFieldHandlePtr();
}
} // namespace OSG
