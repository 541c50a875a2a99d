#pragma once

/// \file
/// Handles of pointer fields, whatever they point to and however they count.

#include "OSGFieldHandle.h"
#include "OSGPointerFields.h"

namespace OSG
{
template <class FieldBase>
class GetSFieldHandle;
template <class FieldBase>
class GetMFieldHandle;
template <class FieldBase>
class EditSFieldHandle;
template <class FieldBase>
class EditMFieldHandle;

template <>
class OSG_SYSTEM_API GetSFieldHandle<PointerSFieldBase> : public GetFieldHandle
{
  public:
    using GetFieldHandle::GetFieldHandle;
    ~GetSFieldHandle() override;

    FieldContainer *get() const { return getPointer(0); }
};

template <>
class OSG_SYSTEM_API GetMFieldHandle<PointerMFieldBase> : public GetFieldHandle
{
  public:
    using GetFieldHandle::GetFieldHandle;
    ~GetMFieldHandle() override;

    /// Null beyond the last entry.
    FieldContainer *operator[](UInt32 index) const { return getPointer(index); }
};

/// Replaces the pointers of a field by those of another one. What hangs together by more than the
/// field, as a node and its core, is linked as its classes would link it.
///
/// A legal source is a pointer field of the same cardinality whose pointers are of the same class
/// or of one derived from it; the policies may differ. From another one nothing is taken: a warning
/// names the field, and the result is false.
class OSG_SYSTEM_API EditPointerFieldHandle : public EditFieldHandle
{
  public:
    using EditFieldHandle::EditFieldHandle;
    ~EditPointerFieldHandle() override;

    // --- text: the id of a container, as of FieldContainerFactoryBase::getMappedContainer ---
    /// 0 is null. False where no container of the field's class has the id, and for children, which
    /// do not take each other's places.
    bool pushIndexedValueFromCString(char const *text, UInt32 index) override;
    /// Appends: `index` is size(). A child leaves the parent that it has.
    bool insertIndexedValueFromCString(char const *text, UInt32 index) override;

    /// The field points to what the source points to. Children belong to one parent: a child field
    /// has no legal source.
    bool shareValues(GetFieldHandlePtr const &source) override;
    /// The field points to clones, made as by deepClone.
    bool cloneValues(GetFieldHandlePtr const &source, ContainerTypeList const &shareTypes = {},
                     ContainerTypeList const &ignoreTypes = {},
                     ContainerGroupList const &shareGroups = {},
                     ContainerGroupList const &ignoreGroups = {}) override;
    bool cloneValuesEx(GetFieldHandlePtr const &source, NameList const &shareTypes = {},
                       NameList const &ignoreTypes = {}, NameList const &shareGroups = {},
                       NameList const &ignoreGroups = {}) override;

    /// Whether a field of the type `from` is a legal source for one of the type `to`.
    static bool isShareable(FieldType const &from, FieldType const &to);

  protected:
    friend class DeepCloner;

    virtual FieldContainer *pointerAt(UInt32 index) const = 0;
    // The field alone: for links that are nothing besides. Values are of the field's class or null.
    virtual void replacePointer(UInt32 index, FieldContainer *value) = 0;
    virtual void appendPointer(FieldContainer *value) = 0;
    virtual void erasePointer(UInt32 index) = 0;

  private:
    bool readPointer(char const *text, FieldContainer *&pointer) const;
    bool isLegal(GetFieldHandlePtr const &source, char const *operation) const;
    bool cloneBy(class DeepCloner &cloner, GetFieldHandle const &source);
    void setSingle(FieldContainer *target);
    void removeAll();
    /// Appends `target`, or what keeps its place where it is null because `source` is not wanted.
    void append(FieldContainer *target, FieldContainer *source);
    UInt16 fieldId() const;
};

template <>
class OSG_SYSTEM_API EditSFieldHandle<PointerSFieldBase> : public EditPointerFieldHandle
{
  public:
    using EditPointerFieldHandle::EditPointerFieldHandle;
    ~EditSFieldHandle() override;

    FieldContainer *get() const { return pointerAt(0); }
};

template <>
class OSG_SYSTEM_API EditMFieldHandle<PointerMFieldBase> : public EditPointerFieldHandle
{
  public:
    using EditPointerFieldHandle::EditPointerFieldHandle;
    ~EditMFieldHandle() override;

    /// Null beyond the last entry.
    FieldContainer *operator[](UInt32 index) const { return pointerAt(index); }
};
} // namespace OSG
