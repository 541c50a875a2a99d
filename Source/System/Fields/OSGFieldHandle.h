#pragma once

/// \file
/// Access to a field of any container without knowing its class: by description, as text, by index.
///
/// A handle is good for as long as its container lives, and does not keep it alive. A get handle
/// reads; an edit handle also writes, and making one marks the field as changed.

#include <string>

#include <boost/shared_ptr.hpp>

#include "OSGFieldDescription.h"
#include "OSGOutStream.h"
#include "OSGTypeLists.h"

namespace OSG
{
class FieldContainer;

class OSG_SYSTEM_API FieldHandle
{
  public:
    /// `field` is the address of a value field, null for one of pointers.
    FieldHandle(FieldDescriptionBase const *description, FieldContainer *container,
                void const *field = nullptr);
    virtual ~FieldHandle();

    FieldDescriptionBase const *getDescription() const { return _description; }
    std::string getName() const { return _description->getName(); }
    FieldType const &getType() const { return _description->getFieldType(); }
    FieldContainer *getContainer() const { return _container; }
    bool isValid() const { return _description != nullptr && _container != nullptr; }
    bool isPointerField() const;
    /// A pointer field whose entries have the container as their one parent.
    virtual bool isChildField() const;

    /// Number of values: 1 for a single field.
    virtual UInt32 size() const = 0;
    /// True where the other field has the same type and equal values.
    virtual bool equal(FieldHandle const &other) const = 0;

  protected:
    /// The field of another handle, where it holds values of this one's type; null where not.
    void const *sameField(FieldHandle const &other) const;

    FieldDescriptionBase const *_description;
    FieldContainer *_container;

  private:
    void const *_field;
};

class OSG_SYSTEM_API GetFieldHandle : public FieldHandle
{
  public:
    using FieldHandle::FieldHandle;
    ~GetFieldHandle() override;

    /// Writes value `index` as text; nothing where there is no such value.
    virtual void pushIndexedValueToStream(OutStream &out, UInt32 index) const = 0;
    /// Pointer fields: what value `index` points to. Value fields: null.
    virtual FieldContainer *getPointer(UInt32 index) const;
};

using GetFieldHandlePtr = boost::shared_ptr<GetFieldHandle>;

class OSG_SYSTEM_API EditFieldHandle : public FieldHandle
{
  public:
    using FieldHandle::FieldHandle;
    ~EditFieldHandle() override;

    /// Reads value `index` from its text form; a pointer is the id of its container. False, and
    /// nothing changed, where the text does not read or the index is out of range.
    virtual bool pushIndexedValueFromCString(char const *text, UInt32 index) = 0;
    /// Multi fields: the same for a new value before `index`.
    virtual bool insertIndexedValueFromCString(char const *text, UInt32 index) = 0;
    /// Multi fields: takes value `index` out.
    virtual bool removeIndex(UInt32 index) = 0;

    /// Pointer fields: sets the pointer, or appends it to a multi field. False for another class,
    /// and where only the owner's own functions may do so, as with the children of a node.
    virtual bool add(FieldContainer *value);

    // --- all values at once, from a field of any container; false where nothing was taken ---
    /// Value fields: from one of the same type.
    virtual bool copyValues(GetFieldHandlePtr const &source);
    /// Pointer fields: see EditPointerFieldHandle.
    virtual bool shareValues(GetFieldHandlePtr const &source);
    virtual bool cloneValues(GetFieldHandlePtr const &source,
                             ContainerTypeList const &shareTypes = {},
                             ContainerTypeList const &ignoreTypes = {},
                             ContainerGroupList const &shareGroups = {},
                             ContainerGroupList const &ignoreGroups = {});
    virtual bool cloneValuesEx(GetFieldHandlePtr const &source, NameList const &shareTypes = {},
                               NameList const &ignoreTypes = {}, NameList const &shareGroups = {},
                               NameList const &ignoreGroups = {});
};

using EditFieldHandlePtr = boost::shared_ptr<EditFieldHandle>;
} // namespace OSG
