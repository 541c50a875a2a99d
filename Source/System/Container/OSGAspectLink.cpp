#include "OSGAspectLink.h"

#include "OSGChangeList.h"
#include "OSGFieldContainerFactory.h"
#include "OSGThread.h"

namespace OSG
{
AspectLink::AspectLink(ChangeList *giver, UInt32 giverAspect)
    : _log(giverAspect)
    , _aspect(Thread::getCurrentAspect())
{
    receiveAll();
    giver->attach(&_log);
}

AspectLink::~AspectLink() = default;

void AspectLink::receive()
{
    if(_log.isComplete())
        receiveLog();
    else
        receiveAll();
    _log.clear();
}

FieldContainer *AspectLink::sourceOf(AspectStore const *store) const
{
    return store->getPtr(_log.getGiverAspect());
}

FieldContainer *AspectLink::copyIn(AspectStore const *store) const
{
    return store->getPtr(_aspect);
}

void AspectLink::makeCopy(AspectStore *store)
{
    FieldContainer *const source = sourceOf(store);
    if(source == nullptr || copyIn(store) != nullptr)
        return;
    RecordedRefPtr<FieldContainer> &held = _copies[store];
    try
    {
        held = source->createAspectCopy(source);
    }
    catch(...)
    {
        _copies.erase(store);
        throw;
    }
    if(held == nullptr)
        _copies.erase(store);
}

// This may destroy the copy, and other copies that only it refers to.
void AspectLink::dropCopy(AspectStore *store)
{
    auto const found = _copies.find(store);
    if(found == _copies.end())
        return;
    RecordedRefPtr<FieldContainer> const last = std::move(found->second);
    _copies.erase(found);
}

void AspectLink::dropOrphans()
{
    FieldContainerFactoryBase::StoreList orphans;
    for(auto const &[store, copy] : _copies)
    {
        if(sourceOf(store) == nullptr)
            orphans.push_back(store);
    }
    for(AspectStore *store : orphans)
        dropCopy(store);
}

void AspectLink::update(Updates const &updates)
{
    AspectOffsets offsets;
    for(Update const &entry : updates)
    {
        FieldContainer *const source = sourceOf(entry.store);
        FieldContainer *const copy = copyIn(entry.store);
        if(source == nullptr || copy == nullptr)
            continue;
        entry.store->fillOffsetArray(offsets, copy);
        copy->execSyncV(*source, entry.mask & source->getSharedMask(), offsets, 0, 0);
    }
    for(Update const &entry : updates)
    {
        FieldContainer *const source = sourceOf(entry.store);
        UnrecordedRefPtr<FieldContainer> const copy(copyIn(entry.store));
        if(source != nullptr && copy != nullptr)
            copy->changed(entry.mask & source->getSharedMask(), ChangeList::Sync, 0);
    }
}

namespace
{
/// The stores of all containers. They are counted for as long as this object lives.
class AllStores
{
  public:
    AllStores()
        : _stores(FieldContainerFactoryBase::the()->holdStores())
    {
    }
    AllStores(AllStores const &) = delete;
    AllStores &operator=(AllStores const &) = delete;
    ~AllStores()
    {
        for(AspectStore *store : _stores)
            store->release();
    }
    auto begin() const { return _stores.begin(); }
    auto end() const { return _stores.end(); }

  private:
    FieldContainerFactoryBase::StoreList const _stores;
};
} // namespace

void AspectLink::receiveAll()
{
    AllStores const stores;
    Updates updates;
    for(AspectStore *store : stores)
    {
        makeCopy(store);
        updates.push_back({store, ~BitVector(0)});
    }
    update(updates);
    dropOrphans();
}

void AspectLink::receiveLog()
{
    Updates updates;
    std::unordered_map<AspectStore *, std::size_t, std::hash<AspectStore *>,
                       std::equal_to<AspectStore *>,
                       MemAllocator<std::pair<AspectStore *const, std::size_t>>>
        places;
    for(ChangeLog::Entry const &entry : _log.getEntries())
    {
        if(entry.kind == ChangeLog::Kind::Created)
            makeCopy(entry.store);
        if(entry.kind != ChangeLog::Kind::Changed)
            continue;
        auto const [place, isNew] = places.try_emplace(entry.store, updates.size());
        if(isNew)
            updates.push_back({entry.store, 0});
        updates[place->second].mask |= entry.mask;
    }
    update(updates);
    for(ChangeLog::Entry const &entry : _log.getEntries())
    {
        if(entry.kind == ChangeLog::Kind::Ended)
            dropCopy(entry.store);
    }
}
} // namespace OSG
