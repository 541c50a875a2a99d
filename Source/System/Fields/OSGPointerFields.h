#pragma once

/// \file
/// Pointer fields: counted by a policy, typed by a class. Values are pointers to the containers of
/// the owner's aspect.
///
/// A pointer field is not copied with its container: it starts empty in the copy, and `onCreate`
/// fills it, so that references are taken by the copy itself.

#include "OSGFields.h"
#include "OSGPointerList.h"
#include "OSGRefCountPolicies.h"

namespace OSG
{
class ExceptionBinaryDataHandler;
class FieldContainer;

/// What all single pointer fields share, whatever they point to.
class OSG_SYSTEM_API PointerSFieldBase
{
  public:
    static constexpr FieldCardinality Cardinality = FieldCardinality::Single;

    PointerSFieldBase() = default;
    PointerSFieldBase(PointerSFieldBase const &) = delete;
    PointerSFieldBase &operator=(PointerSFieldBase const &) = delete;
    ~PointerSFieldBase() = default;

    FieldContainer *getPointer() const { return _value; }
    /// A pointer goes out as the 32-bit id of its container, 0 for null.
    UInt64 getBinSize() const { return sizeof(UInt32); }
    void copyToBin(ExceptionBinaryDataHandler &handler) const;

  protected:
    FieldContainer *_value = nullptr;
};

/// What all multi pointer fields share.
class OSG_SYSTEM_API PointerMFieldBase
{
  public:
    static constexpr FieldCardinality Cardinality = FieldCardinality::Multi;

    PointerMFieldBase() = default;
    PointerMFieldBase(PointerMFieldBase const &) = delete;
    PointerMFieldBase &operator=(PointerMFieldBase const &) = delete;
    ~PointerMFieldBase() = default;

    UInt32 size() const { return _values.size(); }
    bool empty() const { return _values.empty(); }
    void reserve(UInt32 count) { _values.reserve(count); }
    FieldContainer *getPointer(UInt32 index) const { return _values[index]; }
    FieldContainer *operator[](UInt32 index) const { return getPointer(index); }
    /// Place of the first entry that points to `container`, -1 where there is none.
    Int32 findIndex(FieldContainer const *container) const;

    UInt64 getBinSize() const { return sizeof(UInt32) * (1 + UInt64(_values.size())); }
    void copyToBin(ExceptionBinaryDataHandler &handler) const;

  protected:
    PointerList _values;
};

/// Typed by `Ptr`, a pointer to a container class.
template <class Ptr, class Policy, int Namespace>
class PointerSField;
template <class Ptr, class Policy, int Namespace>
class PointerMField;

/// The field type of a policy and cardinality; specialised in the header of each container class.
template <class T>
struct PointerFieldTypesOf;

/// Number of a policy in the family of a class's field types.
template <class Policy>
struct PolicyNumber;
template <>
struct PolicyNumber<RecordedRefCountPolicy>
{
    static constexpr int value = 0;
};
template <>
struct PolicyNumber<UnrecordedRefCountPolicy>
{
    static constexpr int value = 1;
};
template <>
struct PolicyNumber<WeakRefCountPolicy>
{
    static constexpr int value = 2;
};
template <>
struct PolicyNumber<NoRefCountPolicy>
{
    static constexpr int value = 3;
};

/// What a field of the policy shows of its pointer: a weak one reads as null once the object has
/// died.
template <class Policy, class T>
T *pointer_by(FieldContainer *value)
{
    T *const pointer = static_cast<T *>(value);
    if constexpr(std::is_same_v<Policy, WeakRefCountPolicy>)
        return pointer != nullptr && pointer->isAlive() ? pointer : nullptr;
    else
        return pointer;
}

template <class T, class Policy, int Namespace>
class PointerSField<T *, Policy, Namespace> : public PointerSFieldBase
{
  public:
    using StoredType = T *;
    using PolicyType = Policy;

    PointerSField() = default;
    ~PointerSField() { Policy::subRef(_value); }

    T *getValue() const { return pointer_by<Policy, T>(_value); }
    /// Takes the new reference before it drops the old one.
    void setValue(T *value)
    {
        Policy::addRef(static_cast<FieldContainer *>(value));
        FieldContainer *const old = _value;
        _value = value;
        Policy::subRef(old);
    }
    /// Puts `value` in, counted, and hands the old pointer with its reference to the caller.
    [[nodiscard]] FieldContainer *exchangeValue(T *value)
    {
        Policy::addRef(static_cast<FieldContainer *>(value));
        FieldContainer *const old = _value;
        _value = value;
        return old;
    }

    static FieldType const &getClassType()
    {
        return PointerFieldTypesOf<T>::getFieldType(PolicyNumber<Policy>::value, Cardinality);
    }
};

template <class T, class Policy, int Namespace>
class PointerMField<T *, Policy, Namespace> : public PointerMFieldBase
{
  public:
    using StoredType = T *;
    using PolicyType = Policy;

    using const_iterator = IndexIterator<PointerMField, T *>;

    PointerMField() = default;
    ~PointerMField() { clear(); }

    T *operator[](UInt32 index) const { return pointer_by<Policy, T>(_values[index]); }
    T *front() const { return (*this)[0]; }
    T *back() const { return (*this)[size() - 1]; }
    const_iterator begin() const { return const_iterator(*this, 0); }
    const_iterator end() const { return const_iterator(*this, size()); }

    void push_back(T *value)
    {
        _values.push_back(value);
        Policy::addRef(static_cast<FieldContainer *>(value));
    }
    /// Before the entry at `index`, which may be size().
    void insert(UInt32 index, T *value)
    {
        _values.insert(index, value);
        Policy::addRef(static_cast<FieldContainer *>(value));
    }
    void replace(UInt32 index, T *value)
    {
        FieldContainer *const old = _values[index];
        _values.set(index, value);
        Policy::addRef(static_cast<FieldContainer *>(value));
        Policy::subRef(old);
    }
    /// As replace(), for any index: a field that is too short grows by nulls, which take no room in
    /// a short one; see PointerList.
    void putAt(UInt32 index, T *value)
    {
        FieldContainer *const old = index < size() ? _values[index] : nullptr;
        _values.putAt(index, value);
        Policy::addRef(static_cast<FieldContainer *>(value));
        Policy::subRef(old);
    }
    /// New entries are null.
    void resize(UInt32 size)
    {
        while(_values.size() > size)
            erase(_values.size() - 1);
        _values.reserve(size);
        while(_values.size() < size)
            _values.push_back(nullptr);
    }
    void erase(UInt32 index)
    {
        FieldContainer *const old = _values[index];
        _values.erase(index);
        Policy::subRef(old);
    }
    void clear()
    {
        if(_values.empty())
            return;
        PointerList old;
        takeValues(old);
        for(UInt32 i = 0; i < old.size(); ++i)
            Policy::subRef(old[i]);
    }
    /// Empties the field and hands the pointers with their references to the caller, in the place
    /// of what `empty` held: nothing.
    void takeValues(PointerList &empty) { empty.swap(_values); }

    static FieldType const &getClassType()
    {
        return PointerFieldTypesOf<T>::getFieldType(PolicyNumber<Policy>::value, Cardinality);
    }
};

/// The children of a container: each has the owner as its one parent.
template <class Ptr, class Policy, int Namespace>
class ChildPointerMField : public PointerMField<Ptr, Policy, Namespace>
{
  public:
    /// Index of `child`, size() where it is not in here. `slot` is getLastSlot() of when it was
    /// appended; see PointerList.
    UInt32 findNear(Ptr child, UInt32 slot) const { return this->_values.findNear(child, slot); }
    UInt32 getLastSlot() const { return this->_values.getLastSlot(); }
};

/// The run-time types of the pointers to a class: the pointer type, then the field types by policy
/// (Rec, Unrec, Weak, Unrefd), single before multi.
class OSG_SYSTEM_API PointerTypeFamily
{
  public:
    /// `names` are the nine names in that order; all are literals.
    PointerTypeFamily(char const *const (&names)[9], char const *parentPointer,
                      DataType const &pointedTo);

    DataType const &getPointerType() const { return _pointer; }
    FieldType const &getFieldType(int policy, FieldCardinality cardinality) const;

  private:
    PointerType _pointer;
    FieldType _single[4];
    FieldType _multi[4];
};
} // namespace OSG
