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

namespace OSG
{
class FieldContainer;

class OSG_SYSTEM_API FieldHandle
{
  public:
    FieldHandle(FieldDescriptionBase const *description, FieldContainer *container);
    virtual ~FieldHandle();

    FieldDescriptionBase const *getDescription() const { return _description; }
    std::string getName() const { return _description->getName(); }
    FieldType const &getType() const { return _description->getFieldType(); }
    FieldContainer *getContainer() const { return _container; }
    bool isValid() const { return _description != nullptr && _container != nullptr; }
    bool isPointerField() const;

    /// Number of values: 1 for a single field.
    virtual UInt32 size() const = 0;
    /// True where the other field has the same type and equal values.
    virtual bool equal(FieldHandle const &other) const = 0;

  protected:
    FieldDescriptionBase const *_description;
    FieldContainer *_container;
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

class OSG_SYSTEM_API EditFieldHandle : public FieldHandle
{
  public:
    using FieldHandle::FieldHandle;
    ~EditFieldHandle() override;

    /// Reads value `index` from its text form. False, and nothing changed, where the text does not
    /// read, the index is out of range or the field holds pointers.
    virtual bool pushIndexedValueFromCString(char const *text, UInt32 index) = 0;
    /// Multi fields: the same for a new value before `index`.
    virtual bool insertIndexedValueFromCString(char const *text, UInt32 index) = 0;
    /// Multi fields: takes value `index` out.
    virtual bool removeIndex(UInt32 index) = 0;

    /// Pointer fields: sets the pointer, or appends it to a multi field. False for another class,
    /// and where only the owner's own functions may do so, as with the children of a node.
    virtual bool add(FieldContainer *value);

  private:
    friend class DeepCloner;
    /// Pointer fields: entry `index`, which exists, points to `value` from now on, null or a
    /// container of the class of what it pointed to. Past the owner: for links that are its field
    /// alone.
    virtual void replacePointer(UInt32 index, FieldContainer *value);
};

using GetFieldHandlePtr = boost::shared_ptr<GetFieldHandle>;
using EditFieldHandlePtr = boost::shared_ptr<EditFieldHandle>;
} // namespace OSG
