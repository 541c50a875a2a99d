#include "OSGFieldContainerFactory.h"

#include <mutex>
#include <unordered_set>

#include "OSGFieldContainer.h"
#include "OSGShortLock.h"
#include "OSGStreamIdMap.h"
#include "OSGThread.h"

namespace OSG
{
// Free ids are linked through their own places. Giving an id back happens in destructors, so it
// must not allocate. Id 0 is never given and ends the chain.
struct FieldContainerFactoryBase::Data
{
    /// A container that lives in one aspect, the store of one that may live in more, or the next
    /// free id. Addresses leave the two lowest bits to tell them apart.
    class Place
    {
      public:
        Place() = default;
        explicit Place(FieldContainer const *container)
            : _bits(reinterpret_cast<std::uintptr_t>(container) | Container)
        {
        }
        explicit Place(AspectStore *store)
            : _bits(reinterpret_cast<std::uintptr_t>(store))
        {
        }
        static Place free()
        {
            Place place;
            place._bits = Free;
            return place;
        }
        void linkTo(UInt32 nextFree) { _bits = (std::uintptr_t(nextFree) << 2) | Free; }

        /// Whether a container has the id.
        bool isTaken() const { return (_bits & Free) == 0 && _bits != 0; }
        UInt32 nextFree() const { return static_cast<UInt32>(_bits >> 2); }
        /// Null where there is none.
        AspectStore *store() const
        {
            return (_bits & Kinds) == 0 ? reinterpret_cast<AspectStore *>(_bits) : nullptr;
        }
        FieldContainer *container() const
        {
            return (_bits & Kinds) == Container ? reinterpret_cast<FieldContainer *>(_bits & ~Kinds)
                                                : nullptr;
        }

      private:
        static constexpr std::uintptr_t Free = 1;
        static constexpr std::uintptr_t Container = 2;
        static constexpr std::uintptr_t Kinds = 3;

        std::uintptr_t _bits = 0;
    };

    bool isTaken(UInt32 id) const { return id < places.size() && places[id].isTaken(); }
    void addFree(UInt32 id)
    {
        places[id] = Place::free();
        if(numFree++ == 0)
            firstFree = id;
        else
            places[lastFree].linkTo(id);
        lastFree = id;
    }
    UInt32 takeFree()
    {
        UInt32 const id = firstFree;
        firstFree = places[id].nextFree();
        --numFree;
        return id;
    }

    mutable ShortLock guard;
    std::vector<Place, MemAllocator<Place>> places{Place()}; // by id
    UInt32 firstFree = 0;
    UInt32 lastFree = 0;
    UInt32 numFree = 0;
};

FieldContainerFactoryBase::FieldContainerFactoryBase()
    : _data(new Data)
{
}

FieldContainerFactoryBase *FieldContainerFactoryBase::the()
{
    static FieldContainerFactoryBase *const factory = new FieldContainerFactoryBase;
    return factory;
}

template <>
FieldContainerFactoryBase *SingletonHolder<FieldContainerFactoryBase>::the()
{
    return FieldContainerFactoryBase::the();
}

UInt32 FieldContainerFactoryBase::registerContainer(FieldContainer *const &container)
{
    std::lock_guard<ShortLock> const hold(_data->guard);
    Data::Place const place(container);
    if(_data->numFree == 0)
    {
        _data->places.push_back(place);
        return static_cast<UInt32>(_data->places.size() - 1);
    }
    UInt32 const id = _data->takeFree();
    _data->places[id] = place;
    return id;
}

void FieldContainerFactoryBase::deregisterContainer(UInt32 id)
{
    std::lock_guard<ShortLock> const hold(_data->guard);
    if(_data->isTaken(id))
        _data->addFree(id);
}

void FieldContainerFactoryBase::expectToLeave(UInt32 id) const
{
    // Another thread may be moving the places.
    if(is_sole_thread() && id < _data->places.size())
        __builtin_prefetch(&_data->places[id], 1);
}

AspectStore *FieldContainerFactoryBase::leave(UInt32 id)
{
    std::lock_guard<ShortLock> const hold(_data->guard);
    if(!_data->isTaken(id))
        return nullptr;
    AspectStore *const store = _data->places[id].store();
    if(store == nullptr)
        _data->addFree(id);
    return store;
}

AspectStore *FieldContainerFactoryBase::findStore(UInt32 id) const
{
    std::lock_guard<ShortLock> const hold(_data->guard);
    return _data->isTaken(id) ? _data->places[id].store() : nullptr;
}

FieldContainer *FieldContainerFactoryBase::getContainer(UInt32 id) const
{
    std::lock_guard<ShortLock> const hold(_data->guard);
    if(!_data->isTaken(id))
        return nullptr;
    Data::Place const place = _data->places[id];
    UInt32 const aspect = Thread::getCurrentAspect();
    if(FieldContainer *const container = place.container())
        return container->getAspect() == aspect ? container : nullptr;
    return place.store()->getPtr(aspect);
}

AspectStore *FieldContainerFactoryBase::makeStore(FieldContainer const &container)
{
    std::lock_guard<ShortLock> const hold(_data->guard);
    return makeStoreUnderLock(container, container.getId());
}

// The id is a parameter because a container that another thread is making may not have stored its
// own yet.
AspectStore *FieldContainerFactoryBase::makeStoreUnderLock(FieldContainer const &container,
                                                           UInt32 id)
{
    if(AspectStore *const store = _data->places[id].store())
        return store;
    auto *const store = new AspectStore;
    store->addRef();
    try
    {
        store->setPtrForAspect(const_cast<FieldContainer *>(&container), container.getAspect());
    }
    catch(...)
    {
        store->release();
        throw;
    }
    _data->places[id] = Data::Place(store);
    return store;
}

FieldContainer *FieldContainerFactoryBase::getMappedContainer(UInt32 id) const
{
    StreamIdMap const *const map = StreamIdMap::current();
    return map != nullptr ? map->find(id) : getContainer(id);
}

UInt32 FieldContainerFactoryBase::getNumContainers() const
{
    std::lock_guard<ShortLock> const hold(_data->guard);
    return static_cast<UInt32>(_data->places.size() - 1 - _data->numFree);
}

std::vector<UInt32> FieldContainerFactoryBase::getIds() const
{
    std::lock_guard<ShortLock> const hold(_data->guard);
    std::vector<UInt32> ids;
    for(UInt32 id = 1; id < _data->places.size(); ++id)
    {
        if(_data->isTaken(id))
            ids.push_back(id);
    }
    return ids;
}

FieldContainerFactoryBase::StoreList FieldContainerFactoryBase::holdStores()
{
    std::lock_guard<ShortLock> const hold(_data->guard);
    StoreList stores;
    for(UInt32 id = 1; id < _data->places.size(); ++id)
    {
        Data::Place const place = _data->places[id];
        if(!place.isTaken())
            continue;
        FieldContainer const *const container = place.container();
        stores.push_back(container != nullptr ? makeStoreUnderLock(*container, id) : place.store());
    }
    // Nothing below can fail.
    for(AspectStore *store : stores)
        store->addRef();
    return stores;
}

FieldContainerType *FieldContainerFactoryBase::findType(char const *name) const
{
    return dynamic_cast<FieldContainerType *>(TypeFactory::the().findType(name));
}

std::vector<FieldContainerType *> FieldContainerFactoryBase::getTypes() const
{
    TypeFactory &types = TypeFactory::the();
    std::vector<FieldContainerType *> ordered;
    std::unordered_set<TypeBase const *> taken;
    std::vector<FieldContainerType *> path;
    for(UInt32 id = 0; id < types.getNumTypes(); ++id)
    {
        path.clear();
        TypeBase const *at = types.findType(id);
        for(; at != nullptr && taken.count(at) == 0; at = at->getParent())
        {
            auto *const type = dynamic_cast<FieldContainerType *>(const_cast<TypeBase *>(at));
            if(type == nullptr)
                break;
            taken.insert(at);
            path.push_back(type);
        }
        ordered.insert(ordered.end(), path.rbegin(), path.rend());
    }
    return ordered;
}

TransitPtr<FieldContainer> FieldContainerFactoryBase::createContainer(char const *typeName) const
{
    FieldContainerType const *const type = findType(typeName);
    return type != nullptr ? type->createContainer() : TransitPtr<FieldContainer>();
}
} // namespace OSG
