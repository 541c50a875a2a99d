#pragma once

/// \file
/// The handles of fields that hold values.

#include <algorithm>

#include "OSGFieldHandle.h"
#include "OSGFieldText.h"
#include "OSGFields.h"

namespace OSG
{
/// What get and edit handles of a field of values have in common; `Base` is one of the two.
template <class Field, class Base>
class ValueFieldHandle : public Base
{
  public:
    ValueFieldHandle(FieldDescriptionBase const *description, Field &field,
                     FieldContainer *container)
        : Base(description, container, &field)
        , _values(field)
    {
    }

    UInt32 size() const override
    {
        if constexpr(IsSingle)
            return 1;
        else
            return static_cast<UInt32>(_values.size());
    }

    bool equal(FieldHandle const &other) const override
    {
        auto const *const theirs = static_cast<Field const *>(this->sameField(other));
        if(theirs == nullptr)
            return false;
        if constexpr(IsSingle)
            return _values.getValue() == theirs->getValue();
        else
            return std::equal(_values.begin(), _values.end(), theirs->begin(), theirs->end());
    }

  protected:
    static constexpr bool IsSingle = Field::Cardinality == FieldCardinality::Single;

    Field &_values;
};

template <class Field>
class ValueGetFieldHandle : public ValueFieldHandle<Field const, GetFieldHandle>
{
  public:
    using Handle = ValueFieldHandle<Field const, GetFieldHandle>;
    using Handle::Handle;

    void pushIndexedValueToStream(OutStream &out, UInt32 index) const override
    {
        if(index >= this->size())
            return;
        if constexpr(Handle::IsSingle)
            value_to_text(out, this->_values.getValue());
        else
            value_to_text(out, this->_values[index]);
    }
};

template <class Field>
class ValueEditFieldHandle : public ValueFieldHandle<Field, EditFieldHandle>
{
  public:
    using Handle = ValueFieldHandle<Field, EditFieldHandle>;
    using Handle::Handle;

    bool pushIndexedValueFromCString(char const *text, UInt32 index) override
    {
        if constexpr(Handle::IsSingle)
            return index == 0 && value_from_text(text, this->_values.getValue());
        else
        {
            // A list of bool has no references to its values.
            Value value{};
            if(index >= this->size() || !value_from_text(text, value))
                return false;
            this->_values[index] = std::move(value);
            return true;
        }
    }

    bool insertIndexedValueFromCString([[maybe_unused]] char const *text,
                                       [[maybe_unused]] UInt32 index) override
    {
        if constexpr(Handle::IsSingle)
            return false;
        else
        {
            Value value{};
            if(index > this->size() || !value_from_text(text, value))
                return false;
            this->_values.insert(this->_values.begin() + index, std::move(value));
            return true;
        }
    }

    bool removeIndex([[maybe_unused]] UInt32 index) override
    {
        if constexpr(Handle::IsSingle)
            return false;
        else
        {
            if(index >= this->size())
                return false;
            this->_values.erase(this->_values.begin() + index);
            return true;
        }
    }

    bool copyValues(GetFieldHandlePtr const &source) override
    {
        void const *const from = source != nullptr ? this->sameField(*source) : nullptr;
        if(from == nullptr)
            return false;
        this->_values = *static_cast<Field const *>(from);
        return true;
    }

  private:
    using Value = typename Field::StoredType;
};
} // namespace OSG
