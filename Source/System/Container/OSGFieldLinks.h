#pragma once

/// \file
/// The one way to change a pointer field of a container whose class is not known.

#include "OSGFieldContainer.h"

namespace OSG
{
/// Sets what belongs together by more than one field, as a node and its core, by the functions of
/// its classes: `linkParent` of the pointee, `unlinkChild` of the owner. False where the field is a
/// pointer and no more; the caller then sets the field alone. `old` is what the field points to.
[[nodiscard]] OSG_SYSTEM_API bool link_by_classes(FieldContainer &owner, UInt32 fieldId,
                                                  FieldContainer *old, FieldContainer *target);

/// The pointers of one field of one container. Copies, handles, readers and connectors change
/// pointers through this: it links by the classes where they ask for it and touches the field where
/// they do not. Each change is noted as an edit. Targets are of the field's class or null.
///
/// A view: owner and description must outlive it.
class OSG_SYSTEM_API FieldLinks
{
  public:
    /// `field` describes a pointer field of the owner's class.
    FieldLinks(FieldContainer &owner, FieldDescriptionBase const &field)
        : _owner(owner)
        , _field(field)
        , _access(*field.getPointers())
    {
    }

    UInt32 size() const { return _access.size(_owner); }
    FieldContainer *operator[](UInt32 index) const { return _access.get(_owner, index); }

    /// Makes entry `index` point to `target`. An entry of a list keeps its place and its
    /// bookkeeping (the slot of a chunk). False where the entry is gone instead: null in a list
    /// that its owner keeps free of nulls.
    bool replace(UInt32 index, FieldContainer *target);
    /// Appends to a list as its class appends: a child leaves the parent that it has. Null is
    /// appended only to lists that may hold it.
    void append(FieldContainer *target);
    /// Takes an entry out of a list.
    void remove(UInt32 index);
    void clear();
    /// Fills a field that is empty with what it held elsewhere, in the order that it had there.
    /// What the owner notes beside the entries of a list (the slots of chunks) is left as it is,
    /// save that of nulls which the list does not hold.
    void restore(FieldContainer *const *targets, UInt32 count);

  private:
    UInt32 fieldId() const { return _field.getFieldId(); }
    bool isSingle() const
    {
        return _field.getFieldType().getCardinality() == FieldCardinality::Single;
    }
    void noteEdit();
    void appendAlone(FieldContainer *target);
    void dropNulls();

    FieldContainer &_owner;
    FieldDescriptionBase const &_field;
    PointerFieldAccess const &_access;
};
} // namespace OSG
