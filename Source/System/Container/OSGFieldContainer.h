#pragma once

/// \file
/// Base of every object of the scene: reference counts, edits, aspects.

#include <vector>

#include "OSGAspectStore.h"
#include "OSGPointerFields.h"
#include "OSGRefCountPtr.h"
#include "OSGReflexiveContainer.h"

namespace OSG
{
class ChangeList;

template <>
struct OSG_SYSTEM_API FieldTraits<FieldContainer *, 0>
{
    static DataType const &getType();
};

template <>
struct OSG_SYSTEM_API PointerFieldTypesOf<FieldContainer>
{
    static FieldType const &getFieldType(int policy, FieldCardinality cardinality);
};

/// Byte distances from a container to its copies in the aspects (AspectStore::fillOffsetArray).
using AspectOffsets = std::vector<Int64>;

/// A reflective record with reference counts and a copy per aspect.
///
/// A container is made by the `create` functions of its class (ContainerPattern) and destroyed when
/// its last counted reference goes. Weak references keep its memory only. It belongs to the thread
/// that works on its aspect, so its counts and its change mask are not guarded.
class OSG_SYSTEM_API FieldContainer : public ReflexiveContainer
{
  public:
    static FieldContainerType &getClassType() { return _type; }
    static UInt32 getClassTypeId() { return _type.getId(); }
    static UInt32 getClassGroupId() { return _type.getGroupId(); }
    static FieldContainerType _type;

    /// Number in the factory, the same in all aspects; 0 before the container is registered.
    UInt32 getId() const { return _id; }
    /// Nearly every container has a copy in one aspect only, so its store is made on the first call
    /// of this function. The factory keeps it. Null for an object that has no id.
    AspectStore *getAspectStore() const;
    /// Null where the store has not been made yet.
    AspectStore *findAspectStore() const;
    /// The aspect that this is the copy of.
    UInt32 getAspect() const { return _aspect; }

    // --- references; recorded and unrecorded ones are counted together ---
    void addReferenceRecorded() { ++_refs; }
    void addReferenceUnrecorded() { ++_refs; }
    void addWeakReference() { ++_weakRefs; }
    void subReferenceRecorded() { subReferenceUnrecorded(); }
    void subReferenceUnrecorded()
    {
        if(--_refs <= 0)
            die();
    }
    void subWeakReference();
    Int32 getRefCount() const { return _refs; }
    Int32 getWeakRefCount() const { return _weakRefs; }
    /// False from the moment that the last counted reference has gone.
    bool isAlive() const { return !_dead; }

    /// Whether fields of other containers follow fields of this one.
    bool isConnected() const { return _isConnected; }

    // --- edits ---
    /// Fields edited since the last commit; 0 where none is open.
    BitVector getChangeMask() const { return _changeMask; }
    /// Fields that travel to other aspects.
    BitVector getSharedMask() const { return _sharesAll ? ~BitVector(0) : findSharedMask(); }
    /// Empties the change mask; what commitChanges calls.
    BitVector takeChangeMask();

    // --- virtual operations, in slot order ---
    virtual void deregister(UInt32 id);
    virtual void registerChangedContainerV();
    /// The container of that name at or below this one; null where there is none.
    virtual FieldContainer *findNamedComponent(char const *name);
    virtual TransitPtr<FieldContainer> shallowCopy() const;
    virtual TransitPtr<FieldContainer> shallowCopyLocal(BitVector flags) const;
    virtual TransitPtr<FieldContainer> shallowCopyDependent(BitVector flags) const;
    /// Marks the bounding volumes that depend on this container as out of date.
    virtual void invalidateVolume();
    /// Takes `child` out of the child field with that id; false where it is not in there.
    virtual bool unlinkChild(FieldContainer *child, UInt16 fieldId);
    virtual void execSyncV(FieldContainer &from, BitVector whichField, AspectOffsets &offsets,
                           BitVector syncMode, UInt32 syncInfo);
    /// Drops what the container points to, so that cycles end.
    virtual void resolveLinks();
    virtual FieldContainer *createAspectCopy(FieldContainer const *source) const;
    /// Links this container into the field with that id of `parent`, as the parent's own function
    /// would; false where the field needs no such function, or is none for this class.
    virtual bool linkParent(FieldContainer *parent, UInt16 fieldId);
    /// Takes this container out of that field of `parent`; false where it is not in there.
    virtual bool unlinkParent(FieldContainer *parent, UInt16 fieldId);

    // --- ends of the chains that ContainerPattern runs through the parents ---
    UInt64 getBinSize(BitVector mask) override;
    void copyToBin(ExceptionBinaryDataHandler &handler, BitVector mask) override;
    void copyFromBin(ExceptionBinaryDataHandler &handler, BitVector mask) override;
    void changed(BitVector whichField, UInt32 origin, BitVector details) override;

  protected:
    FieldContainer() = default;
    /// A copy starts with no reference, no edit and no id of its own.
    FieldContainer(FieldContainer const &source)
        : ReflexiveContainer(source)
    {
    }
    ~FieldContainer() override;

    static void initMethod(TypeBase::InitPhase) {}
    void execSync(FieldContainer *, BitVector, AspectOffsets &, BitVector, UInt32) {}
    void onCreate(FieldContainer const *) {}
    void onCreateAspect(FieldContainer const *, FieldContainer const *) {}

    /// Joins the thread's change list.
    void registerChangedContainer();
    /// Called by every setter: enters the change list with the first edit, then adds the fields of
    /// `mask` to the change mask.
    void markEdited(BitVector mask)
    {
        if(_changeMask == 0)
            registerChangedContainer();
        _changeMask |= mask;
    }

    /// Gives a new object its aspect, its id and its entry in the change list. With flags of all
    /// ones there is no entry. The aspect store is made when somebody asks for it.
    void enterSystem(UInt64 localFlags);
    /// Makes this the copy of `source` for the calling thread's aspect.
    void enterAspect(FieldContainer const *source);
    /// Destroys an object whose making has failed and gives its id back.
    void abandon();
    /// Fields whose bits are set are no longer sent to other aspects.
    void keepLocal(BitVector flags)
    {
        if(flags != 0)
            setSharedMask(getSharedMask() & ~flags);
    }
    void shareOnly(BitVector flags) { setSharedMask(flags); }

    /// For the class that owns this container: the slot of its list in which it last put it.
    UInt32 getSlotHint() const { return _place.inOwner; }
    void setSlotHint(UInt32 slot) { _place.inOwner = slot; }
    /// The same 32 bits, for a class of containers that nobody owns: a number of its own.
    UInt32 getOwnNumber() const { return _place.inOwner; }
    void setOwnNumber(UInt32 number) { _place.inOwner = number; }

    /// Whether something depends on this container that it has no link to. The class that sets the
    /// flag keeps a table of what that is.
    bool hasDependents() const { return _hasDependents; }
    void setHasDependents(bool has) { _hasDependents = has; }

  private:
    template <class X, class XBase, class Parent>
    friend class ContainerPattern;
    friend class FieldConnectorFactoryBase;
    friend class FieldLinks;

    friend class FieldContainerFactoryBase;

    void die();
    void leaveChangeList();
    void setSharedMask(BitVector mask);
    void forgetSharedMask();
    BitVector findSharedMask() const;

    // Scenes are made of very many containers, and each of them pays for these members: 40 bytes
    // with the table of virtual functions. Data that only few containers need stand in tables
    // elsewhere.
    struct Place
    {
        UInt32 inChangeList;
        UInt32 inOwner;
    };
    static constexpr int ChangeListBits = 11; // see ChangeList::MaxLists

    BitVector _changeMask = 0;
    union
    {
        Place _place = {0, 0};
        FieldContainer *_nextDead; // while it waits for its end
    };
    UInt32 _id = 0;
    Int32 _refs = 0;
    Int32 _weakRefs = 0;
    UInt16 _aspect = 0;
    UInt16 _changeList : ChangeListBits = 0; // number of the list with its edits, 0 for none
    UInt16 _dead : 1 = 0;                    // the last counted reference has gone
    UInt16 _ended : 1 = 0;                   // and all that is left is memory for weak references
    UInt16 _isConnected : 1 = 0;
    UInt16 _sharesAll : 1 = 1; // else its shared mask is in a table
    UInt16 _hasDependents : 1 = 0;
};
} // namespace OSG
