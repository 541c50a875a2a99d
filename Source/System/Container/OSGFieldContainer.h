#pragma once

/// \file
/// Base of every object of the scene: reference counts, edits, aspects.

#include <atomic>
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
/// A container is made by the `create` functions of its class (ContainerPattern) and ends when its
/// last counted reference goes; weak references only keep its memory. It belongs to the thread that
/// works on its aspect: counts and change mask are plain.
class OSG_SYSTEM_API FieldContainer : public ReflexiveContainer
{
  public:
    static FieldContainerType &getClassType() { return _type; }
    static UInt32 getClassTypeId() { return _type.getId(); }
    static UInt32 getClassGroupId() { return _type.getGroupId(); }
    static FieldContainerType _type;

    /// Number in the factory, the same in all aspects; 0 before the container is registered.
    UInt32 getId() const { return _id; }
    /// Nearly every container lives in one aspect alone: its store is made when somebody first asks
    /// for it. Null for an object that has no id.
    AspectStore *getAspectStore() const
    {
        AspectStore *const store = findAspectStore();
        return store != nullptr || _id == 0 ? store : makeAspectStore();
    }
    /// Null where nobody has asked yet.
    AspectStore *findAspectStore() const { return _aspectStore.load(std::memory_order_acquire); }
    /// The aspect that this is the copy of.
    UInt32 getAspect() const { return _aspect; }

    // --- references ---
    void addReferenceRecorded() { ++_recordedRefs; }
    void addReferenceUnrecorded() { ++_unrecordedRefs; }
    void addWeakReference() { ++_weakRefs; }
    void subReferenceRecorded();
    void subReferenceUnrecorded();
    void subWeakReference();
    Int32 getRefCount() const { return _recordedRefs + _unrecordedRefs; }
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
    /// The bookkeeping of every setter: joins the change list with the first edit, then remembers
    /// the field.
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
    /// Destroys an object that could not be made to the end, as if it had never been.
    void abandon();
    /// Fields whose bits are set no longer travel.
    void keepLocal(BitVector flags) { setSharedMask(getSharedMask() & ~flags); }
    void shareOnly(BitVector flags) { setSharedMask(flags); }

  private:
    template <class X, class XBase, class Parent>
    friend class ContainerPattern;
    friend class FieldConnectorFactoryBase;

    friend class FieldContainerFactoryBase;

    void die();
    AspectStore *makeAspectStore() const;
    void setSharedMask(BitVector mask);
    void forgetSharedMask();
    BitVector findSharedMask() const;

    // Scenes are made of very many containers: what few of them need stands elsewhere.
    BitVector _changeMask = 0;
    mutable std::atomic<AspectStore *> _aspectStore{nullptr};
    union
    {
        ChangeList *_changeList = nullptr; ///< with its edits, while it has any
        FieldContainer *_nextDead;         ///< while it waits for its end
    };
    UInt32 _changePlace = 0;
    UInt32 _id = 0;
    Int32 _recordedRefs = 0;
    Int32 _unrecordedRefs = 0;
    Int32 _weakRefs = 0;
    UInt16 _aspect = 0;
    bool _dead : 1 = false;  // the last counted reference has gone
    bool _ended : 1 = false; // and all that is left is memory for weak references
    bool _isConnected : 1 = false;
    bool _sharesAll : 1 = true; // else its shared mask is in a table
};
} // namespace OSG
