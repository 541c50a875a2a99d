#pragma once

/// \file
/// PointerFieldAccess of the rows of a container class; part of the pattern.

#include <tuple>
#include <type_traits>

#include "OSGFieldContainer.h"
#include "OSGFieldOperations.h"
#include "OSGPointerFieldAccess.h"

namespace OSG
{
/// Row `I` of XBase, which is a pointer field.
template <class XBase, std::size_t I>
class PointerFieldRow
{
  public:
    static constexpr PointerFieldAccess makeAccess()
    {
        return {!IsCopiedPointerField<Field>, Row.access, &size, &get, &set, &append, &erase};
    }

  private:
    static constexpr auto Row = std::get<I>(XBase::fieldRows());
    using Field = typename decltype(Row)::FieldT;
    using Target = typename Field::StoredType;
    static constexpr bool IsSingle = Field::Cardinality == FieldCardinality::Single;

    static Field const &of(FieldContainer const &owner)
    {
        return static_cast<XBase const &>(owner).*Row.member;
    }
    static Field &of(FieldContainer &owner) { return static_cast<XBase &>(owner).*Row.member; }

    static UInt32 size([[maybe_unused]] FieldContainer const &owner)
    {
        if constexpr(IsSingle)
            return 1;
        else
            return of(owner).size();
    }
    static FieldContainer *get(FieldContainer const &owner, [[maybe_unused]] UInt32 index)
    {
        if constexpr(IsSingle)
            return of(owner).getValue();
        else
            return of(owner)[index];
    }
    static void set(FieldContainer &owner, [[maybe_unused]] UInt32 index, FieldContainer *target)
    {
        if constexpr(IsSingle)
            of(owner).setValue(static_cast<Target>(target));
        else
            of(owner).replace(index, static_cast<Target>(target));
    }
    static void append([[maybe_unused]] FieldContainer &owner,
                       [[maybe_unused]] FieldContainer *target)
    {
        if constexpr(!IsSingle)
            of(owner).push_back(static_cast<Target>(target));
    }
    static void erase([[maybe_unused]] FieldContainer &owner, [[maybe_unused]] UInt32 index)
    {
        if constexpr(!IsSingle)
            of(owner).erase(index);
    }
};

/// For the description of row `I`: null where it is a field of values.
template <class XBase, std::size_t I>
PointerFieldAccess const *pointer_access()
{
    using Row = std::tuple_element_t<I, decltype(XBase::fieldRows())>;
    if constexpr(IsPointerField<typename Row::FieldT>)
    {
        static constexpr PointerFieldAccess Access = PointerFieldRow<XBase, I>::makeAccess();
        return &Access;
    }
    else
        return nullptr;
}
} // namespace OSG
