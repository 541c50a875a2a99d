#pragma once

/// \file
/// What a container type knows of one of its fields.

#include <string>

#include <boost/shared_ptr.hpp>

#include "OSGFieldType.h"
#include "OSGPointerFieldAccess.h"

namespace OSG
{
class EditFieldHandle;
class FieldContainer;
class GetFieldHandle;

class OSG_SYSTEM_API FieldDescriptionBase
{
  public:
    /// Make the handles of this field for a container of the description's type.
    using GetHandle = boost::shared_ptr<GetFieldHandle> (*)(FieldContainer const &);
    using EditHandle = boost::shared_ptr<EditFieldHandle> (*)(FieldContainer &);

    enum class Visibility
    {
        External,
        Internal ///< bookkeeping of the system: not shown to people
    };

    /// Texts are literals and not copied, `pointers` is a constant: null for values. A description
    /// without a name is of no use: see isValid().
    FieldDescriptionBase(FieldType const &type, char const *name, char const *documentation,
                         UInt32 id, BitVector mask, Visibility visibility, UInt32 flags,
                         GetHandle getHandle, EditHandle editHandle,
                         PointerFieldAccess const *pointers = nullptr);
    /// The same on the heap, for addInitialDesc. Without a name null, with a warning.
    static FieldDescriptionBase *
    createFieldDescription(FieldType const &type, char const *name, char const *documentation,
                           UInt32 id, BitVector mask, Visibility visibility, UInt32 flags,
                           GetHandle getHandle, EditHandle editHandle,
                           PointerFieldAccess const *pointers = nullptr);
    /// The same by the index of the field alone: its mask is 1 shifted left by it.
    static FieldDescriptionBase *
    createFieldDescriptionIdx(FieldType const &type, char const *name, char const *documentation,
                              UInt32 id, Visibility visibility, UInt32 flags, GetHandle getHandle,
                              EditHandle editHandle, PointerFieldAccess const *pointers = nullptr);
    FieldDescriptionBase(FieldDescriptionBase const &) = default;
    FieldDescriptionBase &operator=(FieldDescriptionBase const &) = delete;
    virtual ~FieldDescriptionBase();

    bool isValid() const;
    char const *getCName() const { return _name; }
    std::string getName() const { return _name; }
    char const *getDocumentation() const { return _documentation; }
    FieldType const &getFieldType() const { return _type; }
    /// The id counts through the type's parents; the mask is 1 shifted left by it.
    UInt32 getFieldId() const { return _id; }
    BitVector getFieldMask() const { return _mask; }
    bool isInternal() const { return _visibility == Visibility::Internal; }
    UInt32 getFlags() const { return _flags; }
    /// How the pointers are reached without a handle; null for a field of values.
    PointerFieldAccess const *getPointers() const { return _pointers; }

    boost::shared_ptr<GetFieldHandle> createGetHandle(FieldContainer const &container) const;
    boost::shared_ptr<EditFieldHandle> createEditHandle(FieldContainer &container) const;

  private:
    FieldType const &_type;
    char const *_name;
    char const *_documentation;
    UInt32 _id;
    BitVector _mask;
    Visibility _visibility;
    UInt32 _flags;
    GetHandle _getHandle;
    EditHandle _editHandle;
    PointerFieldAccess const *_pointers;
};

using FieldDescription = FieldDescriptionBase;
} // namespace OSG
