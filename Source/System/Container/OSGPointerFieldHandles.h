#pragma once

/// \file
/// Handles of pointer fields, whatever they point to and however they count.

#include "OSGFieldHandle.h"
#include "OSGPointerFields.h"

namespace OSG
{
class DeepCloner;
class FieldLinks;

class OSG_SYSTEM_API GetPointerFieldHandle : public GetFieldHandle
{
  public:
    GetPointerFieldHandle(FieldDescriptionBase const *description, FieldContainer const *container);
    ~GetPointerFieldHandle() override;

    UInt32 size() const override;
    bool isChildField() const override;
    bool equal(FieldHandle const &other) const override;
    /// The id of the container, 0 for null.
    void pushIndexedValueToStream(OutStream &out, UInt32 index) const override;
    /// Null beyond the last entry.
    FieldContainer *getPointer(UInt32 index) const override;
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
    EditPointerFieldHandle(FieldDescriptionBase const *description, FieldContainer *container);
    ~EditPointerFieldHandle() override;

    UInt32 size() const override;
    bool isChildField() const override;
    bool equal(FieldHandle const &other) const override;

    // --- text: the id of a container, as of FieldContainerFactoryBase::getMappedContainer ---
    /// 0 is null. False where no container of the field's class has the id, and for children, which
    /// do not take each other's places.
    bool pushIndexedValueFromCString(char const *text, UInt32 index) override;
    /// Appends: `index` is size(). A child leaves the parent that it has. False where the owner
    /// does not take it, as null among attachments or an ancestor among children.
    bool insertIndexedValueFromCString(char const *text, UInt32 index) override;
    bool removeIndex(UInt32 index) override;
    bool add(FieldContainer *value) override;

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
    /// Null beyond the last entry.
    FieldContainer *pointerAt(UInt32 index) const;

  private:
    FieldLinks links() const;
    bool isSingle() const;
    bool suits(FieldContainer const &target) const;
    bool readPointer(char const *text, FieldContainer *&pointer) const;
    bool isLegal(GetFieldHandlePtr const &source, char const *operation) const;
    bool cloneBy(DeepCloner &cloner, GetFieldHandle const &source);
};

template <class FieldBase>
class GetSFieldHandle;
template <class FieldBase>
class GetMFieldHandle;
template <class FieldBase>
class EditSFieldHandle;
template <class FieldBase>
class EditMFieldHandle;

template <>
class OSG_SYSTEM_API GetSFieldHandle<PointerSFieldBase> : public GetPointerFieldHandle
{
  public:
    using GetPointerFieldHandle::GetPointerFieldHandle;
    ~GetSFieldHandle() override;

    FieldContainer *get() const { return getPointer(0); }
};

template <>
class OSG_SYSTEM_API GetMFieldHandle<PointerMFieldBase> : public GetPointerFieldHandle
{
  public:
    using GetPointerFieldHandle::GetPointerFieldHandle;
    ~GetMFieldHandle() override;

    /// Null beyond the last entry.
    FieldContainer *operator[](UInt32 index) const { return getPointer(index); }
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
