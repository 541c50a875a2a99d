#pragma once

/// \file
/// Behaviour of ContainerPattern; included by the generated statics alone.

#include <type_traits>

#include "OSGContainerPattern.h"
#include "OSGFieldOperations.h"
#include "OSGLog.h"
#include "OSGPointerFieldHandles.h"
#include "OSGPointerFieldRow.h"
#include "OSGPointerlessCopy.h"
#include "OSGThread.h"
#include "OSGValueFieldHandles.h"

namespace OSG
{
/// Calls `visit` with each row of XBase in id order.
template <class XBase, class Visit>
void for_each_field(Visit &&visit)
{
    std::apply([&visit](auto const &...row) { (visit(row), ...); }, XBase::fieldRows());
}

// --- making ---

template <class X, class XBase, class Parent>
X *ContainerPattern<X, XBase, Parent>::makeObject([[maybe_unused]] X const *source,
                                                  [[maybe_unused]] BitVector localFlags)
{
    if constexpr(XBase::IsAbstract)
    {
        return nullptr;
    }
    else
    {
        X *const object = source != nullptr ? new X(*source) : new X;
        try
        {
            object->enterSystem(localFlags);
            object->onCreate(source);
            object->onCreateAspect(object, source);
        }
        catch(...)
        {
            object->abandon();
            throw;
        }
        return object;
    }
}

/// The object as the class X, of which it nearly always is.
template <class X, class XBase>
TransitPtr<X> transit_as(TransitPtr<FieldContainer> &&made)
{
    if(made.get() != nullptr && &std::as_const(*made).getType() == &XBase::_type)
        return TransitPtr<X>::adopt(static_cast<X *>(made.release()));
    return dynamic_transit_cast<X>(std::move(made));
}

template <class X, class XBase, class Parent>
TransitPtr<X> ContainerPattern<X, XBase, Parent>::create()
{
    FieldContainer *const prototype = XBase::_type.getPrototype();
    return prototype != nullptr ? transit_as<X, XBase>(prototype->shallowCopy()) : TransitPtr<X>();
}

template <class X, class XBase, class Parent>
TransitPtr<X> ContainerPattern<X, XBase, Parent>::createLocal(BitVector flags)
{
    FieldContainer *const prototype = XBase::_type.getPrototype();
    return prototype != nullptr ? transit_as<X, XBase>(prototype->shallowCopyLocal(flags))
                                : TransitPtr<X>();
}

template <class X, class XBase, class Parent>
TransitPtr<X> ContainerPattern<X, XBase, Parent>::createDependent(BitVector flags)
{
    FieldContainer *const prototype = XBase::_type.getPrototype();
    return prototype != nullptr ? transit_as<X, XBase>(prototype->shallowCopyDependent(flags))
                                : TransitPtr<X>();
}

template <class X, class XBase, class Parent>
X *ContainerPattern<X, XBase, Parent>::createEmpty()
{
    return createEmptyLocal(Thread::getCurrentLocalFlags());
}

template <class X, class XBase, class Parent>
X *ContainerPattern<X, XBase, Parent>::createEmptyLocal(BitVector flags)
{
    X *const object = makeObject(nullptr, flags);
    if(object == nullptr)
        return nullptr;
    try
    {
        object->keepLocal(flags);
    }
    catch(...)
    {
        object->abandon();
        throw;
    }
    return object;
}

template <class X, class XBase, class Parent>
TransitPtr<FieldContainer> ContainerPattern<X, XBase, Parent>::shallowCopy() const
{
    return shallowCopyLocal(Thread::getCurrentLocalFlags());
}

template <class X, class XBase, class Parent>
TransitPtr<FieldContainer>
ContainerPattern<X, XBase, Parent>::shallowCopyLocal(BitVector flags) const
{
    TransitPtr<X> copy(makeObject(static_cast<X const *>(this), flags));
    if(copy.get() != nullptr)
        copy->keepLocal(flags);
    return copy;
}

template <class X, class XBase, class Parent>
TransitPtr<FieldContainer>
ContainerPattern<X, XBase, Parent>::shallowCopyDependent(BitVector flags) const
{
    TransitPtr<X> copy(makeObject(static_cast<X const *>(this), ~flags));
    if(copy.get() != nullptr)
        copy->shareOnly(flags);
    return copy;
}

template <class X, class XBase, class Parent>
FieldContainer *ContainerPattern<X, XBase, Parent>::createAspectCopy(
    [[maybe_unused]] FieldContainer const *source) const
{
    if constexpr(XBase::IsAbstract)
    {
        return nullptr;
    }
    else
    {
        X *const copy = new X(static_cast<X const &>(*this));
        try
        {
            copy->enterAspect(this);
            copy->onCreateAspect(static_cast<X const *>(source), static_cast<X const *>(this));
        }
        catch(...)
        {
            copy->abandon();
            throw;
        }
        return copy;
    }
}

template <class X, class XBase, class Parent>
void ContainerPattern<X, XBase, Parent>::onCreate(X const *source)
{
    Parent::onCreate(source);
    if(source == nullptr)
        return;
    for_each_field<XBase>(
        [this, source](auto const &row)
        {
            using Field = typename std::remove_reference_t<decltype(row)>::FieldT;
            if constexpr(IsCopiedPointerField<Field>)
            {
                // Prototypes hold none: nearly all containers are made without the second question.
                if(!holds_pointers(source->*row.member) || PointerlessCopy::isOf(source))
                    return;
                this->markEdited(row.mask());
                copy_pointers(base()->*row.member, source->*row.member);
            }
        });
}

// --- type ---

template <class X, class XBase, class Parent>
FieldContainerType const &ContainerPattern<X, XBase, Parent>::getType() const
{
    return XBase::_type;
}

template <class X, class XBase, class Parent>
FieldContainerType &ContainerPattern<X, XBase, Parent>::getType()
{
    return XBase::_type;
}

template <class X, class XBase, class Parent>
UInt32 ContainerPattern<X, XBase, Parent>::getContainerSize() const
{
    return sizeof(X);
}

/// A function as a type: sanitizers keep compilers from comparing two addresses in a constant.
template <auto Function>
struct FunctionTag
{
};

// A function of X that is not the pattern's own is another one, or belongs to another class.
template <class X, class XBase, class Parent>
constexpr Replaced ContainerPattern<X, XBase, Parent>::findReplaced()
{
    Replaced found = Replaced::Nothing;
    if(!std::is_same_v<FunctionTag<&X::initMethod>, FunctionTag<&ContainerPattern::initMethod>>)
        found = found | Replaced::InitMethod;
    if(!std::is_same_v<FunctionTag<&X::exitMethod>, FunctionTag<&ContainerPattern::exitMethod>>)
        found = found | Replaced::ExitMethod;
    if(!std::is_same_v<decltype(&X::onCreate), decltype(&ContainerPattern::onCreate)>)
        found = found | Replaced::OnCreate;
    if(!std::is_same_v<decltype(&X::onCreateAspect), decltype(&ContainerPattern::onCreateAspect)>)
        found = found | Replaced::OnCreateAspect;
    if(!std::is_same_v<decltype(&X::execSync), decltype(&ContainerPattern::execSync)>)
        found = found | Replaced::ExecSync;
    return found;
}

template <class X, class XBase, class Parent>
void ContainerPattern<X, XBase, Parent>::initMethod(TypeBase::InitPhase phase)
{
    Parent::initMethod(phase);
}

template <class X, class XBase, class Parent>
void ContainerPattern<X, XBase, Parent>::exitMethod(TypeBase::InitPhase)
{
}

template <class X, class XBase, class Parent>
void ContainerPattern<X, XBase, Parent>::classDescInserter(FieldContainerType &type)
{
    static_assert(findReplaced() == X::Replaces, "a class says what it replaces, see Replaced");
    type.setSharedByClones(X::IsSharedByClones);
    describeRows(type, std::make_index_sequence<std::tuple_size_v<decltype(XBase::fieldRows())>>());
}

template <class X, class XBase, class Parent>
template <std::size_t... I>
void ContainerPattern<X, XBase, Parent>::describeRows([[maybe_unused]] FieldContainerType &type,
                                                      std::index_sequence<I...>)
{
    (describeRow<I>(type), ...);
}

template <class X, class XBase, class Parent>
template <std::size_t I>
void ContainerPattern<X, XBase, Parent>::describeRow(FieldContainerType &type)
{
    constexpr UInt32 FieldFlags = 256;
    constexpr auto Row = std::get<I>(XBase::fieldRows());
    using Field = typename decltype(Row)::FieldT;
    type.addInitialDesc(FieldDescription::createFieldDescription(
        Field::getClassType(), Row.name, Row.prose, Row.id, Row.mask(), Row.visibility, FieldFlags,
        [](FieldContainer const &container)
        {
            constexpr auto Own = std::get<I>(XBase::fieldRows());
            auto const &object = static_cast<XBase const &>(container);
            return object.makeGetHandle(object.*Own.member, Own.id);
        },
        [](FieldContainer &container)
        {
            constexpr auto Own = std::get<I>(XBase::fieldRows());
            auto &object = static_cast<XBase &>(container);
            return object.makeEditHandle(object.*Own.member, Own.id);
        },
        pointer_access<XBase, I>()));
}

template <class X, class XBase, class Parent>
FieldContainer *ContainerPattern<X, XBase, Parent>::createForType(UInt64 flags)
{
    return createEmptyLocal(flags);
}

template <class X, class XBase, class Parent>
void ContainerPattern<X, XBase, Parent>::initType(TypeBase::InitPhase phase)
{
    X::initMethod(phase);
}

template <class X, class XBase, class Parent>
void ContainerPattern<X, XBase, Parent>::exitType(TypeBase::InitPhase phase)
{
    X::exitMethod(phase);
}

// --- fields ---

template <class X, class XBase, class Parent>
UInt64 ContainerPattern<X, XBase, Parent>::getBinSize(BitVector mask)
{
    UInt64 size = Parent::getBinSize(mask);
    for_each_field<XBase>(
        [this, mask, &size](auto const &row)
        {
            if((mask & row.mask()) != 0)
                size += field_bin_size(base()->*row.member);
        });
    return size;
}

template <class X, class XBase, class Parent>
void ContainerPattern<X, XBase, Parent>::copyToBin(ExceptionBinaryDataHandler &handler,
                                                   BitVector mask)
{
    Parent::copyToBin(handler, mask);
    for_each_field<XBase>(
        [this, mask, &handler](auto const &row)
        {
            if((mask & row.mask()) != 0)
                field_to_bin(handler, base()->*row.member);
        });
}

template <class X, class XBase, class Parent>
void ContainerPattern<X, XBase, Parent>::copyFromBin(ExceptionBinaryDataHandler &handler,
                                                     BitVector mask)
{
    Parent::copyFromBin(handler, mask);
    for_each_field<XBase>(
        [this, mask, &handler](auto const &row)
        {
            if((mask & row.mask()) == 0)
                return;
            this->markEdited(row.mask());
            using Field = typename std::remove_reference_t<decltype(row)>::FieldT;
            if constexpr(IsPointerField<Field>)
                pointers_from_bin(handler, *base(), row.id, base()->*row.member);
            else
                field_from_bin(handler, base()->*row.member);
        });
}

template <class X, class XBase, class Parent>
void ContainerPattern<X, XBase, Parent>::execSync(XBase *from, BitVector whichField,
                                                  AspectOffsets &offsets, BitVector syncMode,
                                                  UInt32 syncInfo)
{
    Parent::execSync(from, whichField, offsets, syncMode, syncInfo);
    for_each_field<XBase>(
        [this, from, whichField](auto const &row)
        {
            if((whichField & row.mask()) != 0 && from != base())
                sync_field(base()->*row.member, from->*row.member);
        });
}

template <class X, class XBase, class Parent>
void ContainerPattern<X, XBase, Parent>::execSyncV(FieldContainer &from, BitVector whichField,
                                                   AspectOffsets &offsets, BitVector syncMode,
                                                   UInt32 syncInfo)
{
    // Of X, which may hide the one above.
    static_cast<X *>(this)->execSync(static_cast<XBase *>(&from), whichField, offsets, syncMode,
                                     syncInfo);
}

template <class X, class XBase, class Parent>
void ContainerPattern<X, XBase, Parent>::resolveLinks()
{
    Parent::resolveLinks();
    for_each_field<XBase>(
        [this](auto const &row)
        {
            using Field = typename std::remove_reference_t<decltype(row)>::FieldT;
            if constexpr(IsPointerField<Field>)
            {
                this->markEdited(row.mask());
                clear_pointers(base()->*row.member);
            }
        });
}

template <class X, class XBase, class Parent>
void ContainerPattern<X, XBase, Parent>::dump(UInt32, BitVector) const
{
    OSG_LOG(LOG_DUMP, "Dump %s NI\n", XBase::getClassname());
}

template <class X, class XBase, class Parent>
template <class Field>
GetFieldHandlePtr
ContainerPattern<X, XBase, Parent>::makeGetHandle([[maybe_unused]] Field const &field,
                                                  UInt32 id) const
{
    FieldDescriptionBase const *const description = XBase::_type.getFieldDesc(id);
    if constexpr(std::is_base_of_v<PointerSFieldBase, Field>)
        return GetFieldHandlePtr(new GetSFieldHandle<PointerSFieldBase>(description, base()));
    else if constexpr(std::is_base_of_v<PointerMFieldBase, Field>)
        return GetFieldHandlePtr(new GetMFieldHandle<PointerMFieldBase>(description, base()));
    else
        return GetFieldHandlePtr(
            new ValueGetFieldHandle<Field>(description, field, const_cast<XBase *>(base())));
}

template <class X, class XBase, class Parent>
template <class Field>
EditFieldHandlePtr ContainerPattern<X, XBase, Parent>::makeEditHandle([[maybe_unused]] Field &field,
                                                                      UInt32 id)
{
    FieldDescriptionBase const *const description = XBase::_type.getFieldDesc(id);
    this->markEdited(BitVector(1) << id);
    if constexpr(std::is_base_of_v<PointerSFieldBase, Field>)
        return EditFieldHandlePtr(new EditSFieldHandle<PointerSFieldBase>(description, base()));
    else if constexpr(std::is_base_of_v<PointerMFieldBase, Field>)
        return EditFieldHandlePtr(new EditMFieldHandle<PointerMFieldBase>(description, base()));
    else
        return EditFieldHandlePtr(new ValueEditFieldHandle<Field>(description, field, base()));
}
} // namespace OSG
