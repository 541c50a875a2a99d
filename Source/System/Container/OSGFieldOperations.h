#pragma once

/// \file
/// What the container pattern does with one field, overloaded by the kind of the field.

#include <algorithm>
#include <type_traits>

#include "OSGChangeList.h"
#include "OSGFieldBinary.h"
#include "OSGFieldContainer.h"
#include "OSGFieldContainerFactory.h"
#include "OSGFieldLinks.h"
#include "OSGPointerFields.h"
#include "OSGThread.h"

namespace OSG
{
template <class Field>
inline constexpr bool IsPointerField =
    std::is_base_of_v<PointerSFieldBase, Field> || std::is_base_of_v<PointerMFieldBase, Field>;

template <class T>
std::true_type is_child_field(ChildPointerMField<T, UnrecordedRefCountPolicy, 1> const *);
std::false_type is_child_field(void const *);

/// Child pointers are not copied with their owner: a child has one parent.
template <class Field>
inline constexpr bool IsCopiedPointerField =
    IsPointerField<Field> && !decltype(is_child_field(static_cast<Field *>(nullptr)))::value;

// --- binary form ---

template <class T>
UInt64 field_bin_size(SField<T> const &field)
{
    return value_bin_size(field.getValue());
}

template <class T>
UInt64 field_bin_size(MField<T> const &field)
{
    UInt64 size = sizeof(UInt32);
    if constexpr(std::is_same_v<T, std::string>)
    {
        for(std::string const &value : field)
            size += value_bin_size(value);
    }
    else if(!field.empty())
    {
        size += field.size() * value_bin_size(field.front());
    }
    return size;
}

template <class Field>
requires IsPointerField<Field> UInt64 field_bin_size(Field const &field)
{
    return field.getBinSize();
}

template <class T>
void field_to_bin(ExceptionBinaryDataHandler &handler, SField<T> const &field)
{
    value_to_bin(handler, field.getValue());
}

template <class T>
void field_to_bin(ExceptionBinaryDataHandler &handler, MField<T> const &field)
{
    handler.putValue(static_cast<UInt32>(field.size()));
    if constexpr(FloatCount<T> != 0)
    {
        handler.putValues(reinterpret_cast<Real32 const *>(field.data()),
                          UInt64(field.size()) * FloatCount<T>);
    }
    else if constexpr(BinaryNumber<T> && !std::is_same_v<T, bool>)
    {
        handler.putValues(field.data(), field.size());
    }
    else
    {
        for(T const &value : field)
            value_to_bin(handler, value);
    }
}

template <class Field>
requires IsPointerField<Field>
void field_to_bin(ExceptionBinaryDataHandler &handler, Field const &field)
{
    field.copyToBin(handler);
}

template <class T>
void field_from_bin(ExceptionBinaryDataHandler &handler, SField<T> &field)
{
    value_from_bin(handler, field.getValue());
}

template <class T>
void field_from_bin(ExceptionBinaryDataHandler &handler, MField<T> &field)
{
    constexpr UInt32 Block = 16 * 1024;
    UInt32 count = 0;
    handler.getValue(count);
    field.clear();
    // A count alone is no reason to allocate; the handler ends a short stream.
    while(count != 0)
    {
        UInt32 const next = std::min(count, Block);
        std::size_t const done = field.size();
        count -= next;
        if constexpr(FloatCount<T> != 0)
        {
            field.resize(done + next);
            handler.getValues(reinterpret_cast<Real32 *>(field.data() + done),
                              UInt64(next) * FloatCount<T>);
        }
        else if constexpr(BinaryNumber<T> && !std::is_same_v<T, bool>)
        {
            field.resize(done + next);
            handler.getValues(field.data() + done, next);
        }
        else
        {
            for(UInt32 i = 0; i < next; ++i)
            {
                T value{};
                value_from_bin(handler, value);
                field.push_back(std::move(value));
            }
        }
    }
}

/// The container of a pointer's class that stands for an id of the stream; null for 0, for unknown
/// ids and for containers of another class.
template <class T>
T *mapped_pointer(UInt32 id)
{
    return id == 0 ? nullptr
                   : dynamic_cast<T *>(FieldContainerFactoryBase::the()->getMappedContainer(id));
}

// What hangs together by more than the field is linked by its classes. Elsewhere the old object may
// be needed by others until the commit.

template <class T, class Policy, int Namespace>
void pointers_from_bin(ExceptionBinaryDataHandler &handler, FieldContainer &owner, UInt32 fieldId,
                       PointerSField<T *, Policy, Namespace> &field)
{
    UInt32 id = 0;
    handler.getValue(id);
    T *const target = mapped_pointer<T>(id);
    if(target == field.getValue() || link_by_classes(owner, fieldId, field.getValue(), target))
        return;
    FieldContainer *const old = field.exchangeValue(target);
    if(old != nullptr)
        Thread::getCurrentChangeList()->template addDelayedSubRef<Policy>(old);
}

template <class T, class Policy, int Namespace>
void pointers_from_bin(ExceptionBinaryDataHandler &handler, FieldContainer &, UInt32,
                       PointerMField<T *, Policy, Namespace> &field)
{
    UInt32 count = 0;
    handler.getValue(count);
    PointerList old;
    field.takeValues(old);
    for(UInt32 i = 0; i < old.size(); ++i)
    {
        if(old[i] != nullptr)
            Thread::getCurrentChangeList()->template addDelayedSubRef<Policy>(old[i]);
    }
    for(UInt32 i = 0; i < count; ++i)
    {
        UInt32 id = 0;
        handler.getValue(id);
        field.push_back(mapped_pointer<T>(id));
    }
}

template <class T, class Policy, int Namespace>
void pointers_from_bin(ExceptionBinaryDataHandler &handler, FieldContainer &owner, UInt32 fieldId,
                       ChildPointerMField<T *, Policy, Namespace> &)
{
    FieldLinks children(owner, *owner.getType().getFieldDesc(fieldId));
    children.clear();
    UInt32 count = 0;
    handler.getValue(count);
    for(; count > 0; --count)
    {
        UInt32 id = 0;
        handler.getValue(id);
        children.append(mapped_pointer<T>(id));
    }
}

// --- between the aspects ---

/// The copy of `container` in the calling thread's aspect; null where it has none there.
template <class T>
T *in_this_aspect(T *container)
{
    if(container == nullptr || container->getAspectStore() == nullptr)
        return nullptr;
    return static_cast<T *>(container->getAspectStore()->getPtr(Thread::getCurrentAspect()));
}

template <class T>
void sync_field(SField<T> &field, SField<T> const &from)
{
    field.setValue(from.getValue());
}

template <class T>
void sync_field(MField<T> &field, MField<T> const &from)
{
    field = from;
}

template <class T, class Policy, int Namespace>
void sync_field(PointerSField<T *, Policy, Namespace> &field,
                PointerSField<T *, Policy, Namespace> const &from)
{
    field.setValue(in_this_aspect(from.getValue()));
}

template <class T, class Policy, int Namespace>
void sync_field(PointerMField<T *, Policy, Namespace> &field,
                PointerMField<T *, Policy, Namespace> const &from)
{
    UInt32 const size = from.size();
    field.resize(size);
    for(UInt32 i = 0; i < size; ++i)
        field.replace(i, in_this_aspect(from[i]));
}

// --- pointers ---

inline bool holds_pointers(PointerSFieldBase const &field) { return field.getPointer() != nullptr; }
inline bool holds_pointers(PointerMFieldBase const &field) { return !field.empty(); }

template <class T, class Policy, int Namespace>
void copy_pointers(PointerSField<T *, Policy, Namespace> &field,
                   PointerSField<T *, Policy, Namespace> const &from)
{
    field.setValue(from.getValue());
}

template <class T, class Policy, int Namespace>
void copy_pointers(PointerMField<T *, Policy, Namespace> &field,
                   PointerMField<T *, Policy, Namespace> const &from)
{
    field.reserve(from.size());
    for(T *value : from)
        field.push_back(value);
}

template <class T, class Policy, int Namespace>
void clear_pointers(PointerSField<T *, Policy, Namespace> &field)
{
    field.setValue(nullptr);
}

template <class T, class Policy, int Namespace>
void clear_pointers(PointerMField<T *, Policy, Namespace> &field)
{
    field.clear();
}
} // namespace OSG
