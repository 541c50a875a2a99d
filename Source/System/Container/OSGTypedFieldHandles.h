#pragma once

/// \file
/// The handles of each kind of field.

#include "OSGFieldContainer.h"
#include "OSGFieldHandle.h"
#include "OSGFieldOperations.h"
#include "OSGFieldText.h"
#include "OSGPointerFieldHandles.h"

namespace OSG
{
/// The classes that the handles of a field derive from.
template <class Field>
struct HandleBases
{
    using Get = GetFieldHandle;
    using Edit = EditFieldHandle;
};
template <class Field>
requires std::is_base_of_v<PointerSFieldBase, Field>
struct HandleBases<Field>
{
    using Get = GetSFieldHandle<PointerSFieldBase>;
    using Edit = EditSFieldHandle<PointerSFieldBase>;
};
template <class Field>
requires std::is_base_of_v<PointerMFieldBase, Field>
struct HandleBases<Field>
{
    using Get = GetMFieldHandle<PointerMFieldBase>;
    using Edit = EditMFieldHandle<PointerMFieldBase>;
};

/// What get and edit handles of a field have in common; `Base` is one of the two.
template <class Field, class Base>
class FieldHandleOn : public Base
{
  public:
    FieldHandleOn(FieldDescriptionBase const *description, Field const &field,
                  FieldContainer *container)
        : Base(description, container)
        , _field(field)
    {
    }

    UInt32 size() const override
    {
        if constexpr(Field::Cardinality == FieldCardinality::Single)
            return 1;
        else
            return static_cast<UInt32>(_field.size());
    }

    bool isChildField() const override
    {
        return IsPointerField<Field> && !IsCopiedPointerField<Field>;
    }

    bool equal(FieldHandle const &other) const override
    {
        if(&other.getType() != &this->getType() || other.size() != size())
            return false;
        Field const *const theirs = field_of(other);
        return theirs != nullptr && equal_values(*theirs);
    }

    Field const &field() const { return _field; }

  protected:
    /// Null where the handle is of another kind of field.
    static Field const *field_of(FieldHandle const &handle)
    {
        using Bases = HandleBases<Field>;
        if(auto const *get =
               dynamic_cast<FieldHandleOn<Field, typename Bases::Get> const *>(&handle))
            return &get->field();
        if(auto const *edit =
               dynamic_cast<FieldHandleOn<Field, typename Bases::Edit> const *>(&handle))
            return &edit->field();
        return nullptr;
    }

    Field const &_field;

  private:
    bool equal_values(Field const &theirs) const
    {
        if constexpr(Field::Cardinality == FieldCardinality::Single)
            return _field.getValue() == theirs.getValue();
        else
            return std::equal(_field.begin(), _field.end(), theirs.begin());
    }
};

template <class Field>
class TypedGetFieldHandle : public FieldHandleOn<Field, typename HandleBases<Field>::Get>
{
  public:
    using Handle = FieldHandleOn<Field, typename HandleBases<Field>::Get>;
    using Handle::Handle;

    void pushIndexedValueToStream(OutStream &out, UInt32 index) const override
    {
        if(index >= this->size())
            return;
        if constexpr(IsPointerField<Field>)
        {
            FieldContainer const *const pointer = getPointer(index);
            out << (pointer != nullptr ? pointer->getId() : UInt32(0));
        }
        else if constexpr(Field::Cardinality == FieldCardinality::Single)
            value_to_text(out, this->_field.getValue());
        else
            value_to_text(out, this->_field[index]);
    }

    FieldContainer *getPointer([[maybe_unused]] UInt32 index) const override
    {
        if constexpr(!IsPointerField<Field>)
            return nullptr;
        else if constexpr(Field::Cardinality == FieldCardinality::Single)
            return this->_field.getValue();
        else
            return index < this->_field.size() ? this->_field[index] : nullptr;
    }
};

template <class Field>
class TypedEditFieldHandle : public FieldHandleOn<Field, typename HandleBases<Field>::Edit>
{
  public:
    using Handle = FieldHandleOn<Field, typename HandleBases<Field>::Edit>;

    TypedEditFieldHandle(FieldDescriptionBase const *description, Field &field,
                         FieldContainer *container, FieldAccess access)
        : Handle(description, field, container)
        , _edited(field)
        , _access(access)
    {
    }

    bool pushIndexedValueFromCString(char const *text, UInt32 index) override
    {
        if constexpr(IsPointerField<Field>)
            return Handle::pushIndexedValueFromCString(text, index);
        else if constexpr(Field::Cardinality == FieldCardinality::Single)
            return index == 0 && value_from_text(text, _edited.getValue());
        else
        {
            // A list of bool has no references to its values.
            typename Field::StoredType value{};
            if(index >= _edited.size() || !value_from_text(text, value))
                return false;
            _edited[index] = std::move(value);
            return true;
        }
    }

    bool insertIndexedValueFromCString(char const *text, UInt32 index) override
    {
        if constexpr(IsPointerField<Field>)
            return Handle::insertIndexedValueFromCString(text, index);
        else if constexpr(Field::Cardinality == FieldCardinality::Single)
            return false;
        else
        {
            typename Field::StoredType value{};
            if(index > _edited.size() || !value_from_text(text, value))
                return false;
            _edited.insert(_edited.begin() + index, std::move(value));
            return true;
        }
    }

    bool removeIndex(UInt32 index) override
    {
        if constexpr(Field::Cardinality == FieldCardinality::Single)
            return false;
        else
        {
            if(index >= _edited.size())
                return false;
            if constexpr(IsPointerField<Field>)
            {
                // What hangs together by more than this field is taken apart by its owner.
                UInt16 const id = static_cast<UInt16>(this->_description->getFieldId());
                if(this->_container->unlinkChild(_edited.getPointer(index), id))
                    return true;
                if(_access == FieldAccess::Protected)
                    return false;
                _edited.erase(index);
            }
            else
                _edited.erase(_edited.begin() + index);
            return true;
        }
    }

    bool add([[maybe_unused]] FieldContainer *value) override
    {
        if constexpr(!IsPointerField<Field>)
            return false;
        else
        {
            using Pointed = std::remove_pointer_t<typename Field::StoredType>;
            auto *const target = dynamic_cast<Pointed *>(value);
            if(_access == FieldAccess::Protected || (value != nullptr && target == nullptr))
                return false;
            if constexpr(Field::Cardinality == FieldCardinality::Single)
                _edited.setValue(target);
            else
                _edited.push_back(target);
            return true;
        }
    }

    bool copyValues([[maybe_unused]] GetFieldHandlePtr const &source) override
    {
        if constexpr(IsPointerField<Field>)
            return false;
        else
        {
            Field const *const from = source != nullptr ? Handle::field_of(*source) : nullptr;
            if(from == nullptr)
                return false;
            _edited = *from;
            return true;
        }
    }

  protected:
    Field &_edited;

  private:
    FieldAccess _access;
};

/// The edit handle of a pointer field, with what its base wants of the field.
template <class Field>
class TypedEditPointerHandle : public TypedEditFieldHandle<Field>
{
  public:
    using TypedEditFieldHandle<Field>::TypedEditFieldHandle;

  private:
    static constexpr bool IsSingle = Field::Cardinality == FieldCardinality::Single;
    using Stored = typename Field::StoredType;

    FieldContainer *pointerAt([[maybe_unused]] UInt32 index) const override
    {
        if constexpr(IsSingle)
            return this->_edited.getValue();
        else
            return index < this->_edited.size() ? this->_edited[index] : nullptr;
    }
    void replacePointer([[maybe_unused]] UInt32 index, FieldContainer *value) override
    {
        if constexpr(IsSingle)
            this->_edited.setValue(static_cast<Stored>(value));
        else
            this->_edited.replace(index, static_cast<Stored>(value));
    }
    void appendPointer([[maybe_unused]] FieldContainer *value) override
    {
        if constexpr(!IsSingle)
            this->_edited.push_back(static_cast<Stored>(value));
    }
    void erasePointer([[maybe_unused]] UInt32 index) override
    {
        if constexpr(!IsSingle)
            this->_edited.erase(index);
    }
};

template <class Field>
using EditHandleOf = std::conditional_t<IsPointerField<Field>, TypedEditPointerHandle<Field>,
                                        TypedEditFieldHandle<Field>>;
} // namespace OSG
