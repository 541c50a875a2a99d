#include "OSGFieldContainer.h"

#include <mutex>
#include <unordered_map>

#include "OSGChangeList.h"
#include "OSGFieldConnector.h"
#include "OSGFieldContainerFactory.h"
#include "OSGStaticTls.h"
#include "OSGThread.h"

namespace OSG
{
FieldContainerType FieldContainer::_type("FieldContainer", "ReflexiveContainer", "NULL", 0, nullptr,
                                         nullptr, nullptr, nullptr, false, 0, "", "");

namespace
{
constexpr char const *PointerNames[9] = {
    "FieldContainerPtr",        "SFRecFieldContainerPtr",    "SFUnrecFieldContainerPtr",
    "SFWeakFieldContainerPtr",  "SFUnrefdFieldContainerPtr", "MFRecFieldContainerPtr",
    "MFUnrecFieldContainerPtr", "MFWeakFieldContainerPtr",   "MFUnrefdFieldContainerPtr"};
PointerTypeFamily const PointerTypes(PointerNames, nullptr, FieldContainer::_type);
} // namespace

DataType const &FieldTraits<FieldContainer *, 0>::getType()
{
    return PointerTypes.getPointerType();
}

FieldType const &PointerFieldTypesOf<FieldContainer>::getFieldType(int policy,
                                                                   FieldCardinality cardinality)
{
    return PointerTypes.getFieldType(policy, cardinality);
}

// --- life and death ---

FieldContainer::~FieldContainer()
{
    leaveChangeList();
    if(!_sharesAll)
        forgetSharedMask();
}

namespace
{
// Containers whose last reference has gone. A container that is destroyed drops references, which
// may be the last ones of other containers. Those wait here, so that destroying a chain of any
// length does not recurse. They are linked through themselves, so that destroying allocates
// nothing. The struct is plain data because statics of a host are destroyed after the objects of
// the thread.
struct Mortuary
{
    FieldContainer *newest;
    bool isOpen;
};

constinit OSG_STATIC_TLS thread_local Mortuary mortuary = {nullptr, false};
} // namespace

void FieldContainer::subWeakReference()
{
    if(--_weakRefs == 0 && _ended)
        delete this;
}

void FieldContainer::die()
{
    if(_dead)
        return;
    _dead = 1;

    leaveChangeList();
    _nextDead = mortuary.newest;
    mortuary.newest = this;
    if(mortuary.isOpen)
    {
        FieldContainerFactoryBase::the()->expectToLeave(_id);
        return;
    }
    mortuary.isOpen = true;
    struct Closing
    {
        ~Closing() { mortuary.isOpen = false; }
    } const closing;
    while(mortuary.newest != nullptr)
    {
        FieldContainer *const container = mortuary.newest;
        mortuary.newest = container->_nextDead;
        container->_place = {0, 0};
        container->deregister(container->_id);
    }
}

void FieldContainer::deregister(UInt32 id)
{
    if(_isConnected)
        FieldConnectorFactoryBase::the()->disconnect(this);
    onDestroyAspect(id, _aspect);
    AspectStore *const store = FieldContainerFactoryBase::the()->leave(id);
    if(store != nullptr && ChangeLog::isAnyOpen())
        Thread::getCurrentChangeList()->addEnded(this);
    bool const isLast = store == nullptr || store->removePtr(this);
    if(id != 0 && isLast)
    {
        onDestroy(id);
        if(store != nullptr)
            FieldContainerFactoryBase::the()->deregisterContainer(id);
    }
    _id = 0;
    if(store != nullptr)
        store->release();
    if(_weakRefs > 0)
    {
        // Weak pointers still need the memory, but what the container points to is released now.
        // That may drop the last weak pointer to this container itself. The extra weak reference
        // keeps it until the flag is set.
        addWeakReference();
        resolveLinks();
        takeChangeMask();
        _ended = 1;
        subWeakReference();
        return;
    }
    delete this;
}

// --- edits ---

void FieldContainer::registerChangedContainer()
{
    // Edits of a container that is being destroyed are not published.
    if(_dead)
        return;
    ChangeList *const list = Thread::getCurrentChangeList();
    _place.inChangeList = list->addChanged(this);
    static_assert(ChangeList::MaxLists < (1u << ChangeListBits));
    _changeList = static_cast<UInt16>(list->getNumber() & ((1u << ChangeListBits) - 1));
}

void FieldContainer::registerChangedContainerV() { registerChangedContainer(); }

BitVector FieldContainer::takeChangeMask()
{
    BitVector const mask = _changeMask;
    leaveChangeList();
    return mask;
}

void FieldContainer::leaveChangeList()
{
    _changeMask = 0;
    if(_changeList == 0)
        return;
    ChangeList::withNumber(_changeList)->clearChanged(_place.inChangeList);
    _changeList = 0;
}

// --- entering the system ---

namespace
{
constexpr UInt64 NotReported = ~UInt64(0);
constexpr UInt32 CreatedIdMask = 0x3FFFFFFF;
} // namespace

void FieldContainer::enterSystem(UInt64 localFlags)
{
    _aspect = static_cast<UInt16>(Thread::getCurrentAspect());
    _id = FieldContainerFactoryBase::the()->registerContainer(this);
    if(localFlags != NotReported)
        Thread::getCurrentChangeList()->addCreated(_id & CreatedIdMask, localFlags);
}

void FieldContainer::enterAspect(FieldContainer const *source)
{
    AspectStore *const store = source->getAspectStore();
    if(store == nullptr)
        return;
    _aspect = static_cast<UInt16>(Thread::getCurrentAspect());
    // The steps that may run out of memory come first.
    setSharedMask(source->getSharedMask());
    store->setPtrForAspect(this, _aspect);
    store->addRef();
    _id = source->_id;
}

void FieldContainer::abandon()
{
    if(AspectStore *const store = FieldContainerFactoryBase::the()->leave(_id))
    {
        if(store->removePtr(this))
            FieldContainerFactoryBase::the()->deregisterContainer(_id);
        store->release();
    }
    delete this;
}

AspectStore *FieldContainer::getAspectStore() const
{
    return _id != 0 ? FieldContainerFactoryBase::the()->makeStore(*this) : nullptr;
}

AspectStore *FieldContainer::findAspectStore() const
{
    return FieldContainerFactoryBase::the()->findStore(_id);
}

// --- what few containers have ---

namespace
{
// Never destroyed, as the containers of a host's statics may outlive it.
struct SharedMasks
{
    std::mutex guard;
    std::unordered_map<FieldContainer const *, BitVector, std::hash<FieldContainer const *>,
                       std::equal_to<FieldContainer const *>,
                       MemAllocator<std::pair<FieldContainer const *const, BitVector>>>
        masks;
};

SharedMasks &shared_masks()
{
    static SharedMasks *const masks = new SharedMasks;
    return *masks;
}
} // namespace

void FieldContainer::setSharedMask(BitVector mask)
{
    if(!_sharesAll)
        forgetSharedMask();
    if(mask == ~BitVector(0))
        return;
    SharedMasks &shared = shared_masks();
    std::lock_guard const hold(shared.guard);
    shared.masks[this] = mask;
    _sharesAll = 0;
}

void FieldContainer::forgetSharedMask()
{
    SharedMasks &shared = shared_masks();
    std::lock_guard const hold(shared.guard);
    shared.masks.erase(this);
    _sharesAll = 1;
}

BitVector FieldContainer::findSharedMask() const
{
    SharedMasks &shared = shared_masks();
    std::lock_guard const hold(shared.guard);
    return shared.masks.at(this);
}

// --- what a class without own behaviour does ---

void FieldContainer::changed(BitVector, UInt32, BitVector) {}
UInt64 FieldContainer::getBinSize(BitVector) { return 0; }
void FieldContainer::copyToBin(ExceptionBinaryDataHandler &, BitVector) {}
void FieldContainer::copyFromBin(ExceptionBinaryDataHandler &, BitVector) {}
FieldContainer *FieldContainer::findNamedComponent(char const *) { return nullptr; }
TransitPtr<FieldContainer> FieldContainer::shallowCopy() const { return nullptr; }
TransitPtr<FieldContainer> FieldContainer::shallowCopyLocal(BitVector) const { return nullptr; }
TransitPtr<FieldContainer> FieldContainer::shallowCopyDependent(BitVector) const { return nullptr; }
void FieldContainer::invalidateVolume() {}
bool FieldContainer::unlinkChild(FieldContainer *, UInt16) { return false; }
void FieldContainer::execSyncV(FieldContainer &, BitVector, AspectOffsets &, BitVector, UInt32) {}
void FieldContainer::resolveLinks() {}
FieldContainer *FieldContainer::createAspectCopy(FieldContainer const *) const { return nullptr; }
bool FieldContainer::linkParent(FieldContainer *, UInt16) { return false; }
bool FieldContainer::unlinkParent(FieldContainer *parent, UInt16 fieldId)
{
    return parent != nullptr && parent->unlinkChild(this, fieldId);
}
} // namespace OSG
