#pragma once

/// \file
/// What every container class is made of, written once.
///
/// A container class X has a description OSGX.xml. The generator turns it into XBase: the fields,
/// their ids, masks and accessors, and a table of rows, one per field. XBase derives from
/// ContainerPattern<X, XBase, Parent>, and X from XBase; X makes its constructors protected and the
/// pattern its friend (`friend Pattern;`). The pattern does the rest by loops over
/// the rows: the create family, sizes, binary form, synchronisation, links, copies, descriptions
/// and handles. Its functions are instantiated once per class, in the generated statics
/// (OSGContainerPattern.inl), and exported from the unit of the class. Where no header OSGX.h
/// stands beside the description, X is generated as well.
///
/// What a class may do in its own way:
///
///   any virtual operation of FieldContainer and of the parents, by `override`
///   initMethod, exitMethod, onCreate, onCreateAspect, execSync, which the pattern calls by their
///   names: a function of that name in X, which calls the pattern's, and a line that says so,
///
///     static constexpr Replaced Replaces = Replaced::OnCreate | Replaced::ExecSync;
///
///   static constexpr bool IsSharedByClones = true;   deepClone points to the same object
///
/// The compiler refuses a class that replaces something else than it says.

#include <tuple>
#include <utility>

#include "OSGFieldContainer.h"
#include "OSGFields.h"
#include "OSGPointerFields.h"
#include "OSGValueFieldTypes.h"

namespace OSG
{
/// One field of the class `Owner`.
template <class Owner, class Field>
struct FieldRow
{
    using FieldT = Field;

    Field Owner::*member;
    char const *name;
    UInt32 id;
    FieldDescriptionBase::Visibility visibility;
    FieldAccess access;
    char const *prose;

    constexpr BitVector mask() const { return BitVector(1) << id; }
};

template <class Owner, class Field>
constexpr FieldRow<Owner, Field> make_row(Field Owner::*member, char const *name, UInt32 id,
                                          FieldDescriptionBase::Visibility visibility,
                                          FieldAccess access, char const *prose)
{
    return {member, name, id, visibility, access, prose};
}

/// Behaviour of the pattern that a class replaces by a function of the same name.
enum class Replaced : UInt8
{
    Nothing = 0,
    InitMethod = 1,
    ExitMethod = 2,
    OnCreate = 4,
    OnCreateAspect = 8,
    ExecSync = 16
};
constexpr Replaced operator|(Replaced one, Replaced other)
{
    return static_cast<Replaced>(static_cast<UInt8>(one) | static_cast<UInt8>(other));
}

template <class X, class XBase, class Parent>
class ContainerPattern : public Parent
{
  public:
    /// Of this class, not of its parents.
    static constexpr Replaced Replaces = Replaced::Nothing;
    static constexpr bool IsSharedByClones = false;

    // --- making; see the copies below for the flags ---
    /// Copy of the type's prototype; null where there is none: an abstract class, or a system that
    /// is not up.
    static TransitPtr<X> create();
    static TransitPtr<X> createLocal(BitVector flags);
    static TransitPtr<X> createDependent(BitVector flags);
    /// Default-constructed, without the prototype; not referenced. Null for an abstract class.
    static X *createEmpty();
    static X *createEmptyLocal(BitVector flags);

    /// Copies with the calling thread's local flags, or with the given ones: fields whose bits are
    /// set stay local to this aspect. A dependent copy shares only the fields of `flags`. Pointer
    /// fields point to what the source points to; children are not copied, they have one parent.
    TransitPtr<FieldContainer> shallowCopy() const override;
    TransitPtr<FieldContainer> shallowCopyLocal(BitVector flags) const override;
    TransitPtr<FieldContainer> shallowCopyDependent(BitVector flags) const override;
    FieldContainer *createAspectCopy(FieldContainer const *source) const override;

    // --- type ---
    FieldContainerType const &getType() const override;
    FieldContainerType &getType() override;
    UInt32 getContainerSize() const override;
    static void classDescInserter(FieldContainerType &type);

    // --- fields ---
    UInt64 getBinSize(BitVector mask) override;
    void copyToBin(ExceptionBinaryDataHandler &handler, BitVector mask) override;
    void copyFromBin(ExceptionBinaryDataHandler &handler, BitVector mask) override;
    void execSync(XBase *from, BitVector whichField, AspectOffsets &offsets, BitVector syncMode,
                  UInt32 syncInfo);
    void execSyncV(FieldContainer &from, BitVector whichField, AspectOffsets &offsets,
                   BitVector syncMode, UInt32 syncInfo) override;
    void resolveLinks() override;
    /// "Dump <class> NI", and nothing of the object's state.
    void dump(UInt32 indent = 0, BitVector flags = 0) const override;

  protected:
    ContainerPattern() = default;
    ContainerPattern(ContainerPattern const &) = default;
    ~ContainerPattern() override = default;

    static void initMethod(TypeBase::InitPhase phase);
    static void exitMethod(TypeBase::InitPhase phase);
    /// What the type calls: createEmptyLocal, and the functions of X, which may hide those above.
    static FieldContainer *createForType(UInt64 flags);
    static void initType(TypeBase::InitPhase phase);
    static void exitType(TypeBase::InitPhase phase);

    /// Fills the pointer fields of a copy from its source; null for an empty object.
    void onCreate(X const *source);

    template <class Field>
    GetFieldHandlePtr makeGetHandle(Field const &field, UInt32 id) const;
    template <class Field>
    EditFieldHandlePtr makeEditHandle(Field &field, UInt32 id);

  private:
    template <std::size_t... I>
    static void describeRows(FieldContainerType &type, std::index_sequence<I...>);
    template <std::size_t I>
    static void describeRow(FieldContainerType &type);

    static constexpr Replaced findReplaced();
    static X *makeObject(X const *source, BitVector localFlags);
    XBase *base() { return static_cast<XBase *>(this); }
    XBase const *base() const { return static_cast<XBase const *>(this); }
};
} // namespace OSG
