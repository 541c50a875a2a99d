#include "OSGFieldContainerFactory.h"

#include <mutex>
#include <unordered_set>

#include "OSGFieldContainer.h"
#include "OSGStreamIdMap.h"
#include "OSGThread.h"

namespace OSG
{
// The free ids are a chain through their own places, so that giving one back, which happens in
// destructors, takes no memory. Id 0 is never given: it ends the chain.
struct FieldContainerFactoryBase::Data
{
    class Place
    {
      public:
        explicit Place(AspectStore *store)
            : _bits(reinterpret_cast<std::uintptr_t>(store))
        {
        }
        static Place free() { return Place(std::uintptr_t(1)); }
        void linkTo(UInt32 nextFree) { _bits = (std::uintptr_t(nextFree) << 1) | 1; }

        bool isFree() const { return (_bits & 1) != 0; }
        UInt32 nextFree() const { return static_cast<UInt32>(_bits >> 1); }
        /// Null for a free place.
        AspectStore *store() const
        {
            return isFree() ? nullptr : reinterpret_cast<AspectStore *>(_bits);
        }

      private:
        explicit Place(std::uintptr_t bits)
            : _bits(bits)
        {
        }

        std::uintptr_t _bits; // a store's address is even
    };

    /// Null for an id that no container has.
    AspectStore *storeOf(UInt32 id) const
    {
        return id < places.size() ? places[id].store() : nullptr;
    }
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

    mutable std::mutex guard;
    std::vector<Place, MemAllocator<Place>> places{Place(nullptr)}; // by id
    UInt32 firstFree = 0;
    UInt32 lastFree = 0;
    UInt32 numFree = 0;
};

FieldContainerFactoryBase::FieldContainerFactoryBase()
    : _data(new Data)
{
}
FieldContainerFactoryBase::~FieldContainerFactoryBase() = default;

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
    std::lock_guard<std::mutex> hold(_data->guard);
    Data::Place const place(container->getAspectStore());
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
    std::lock_guard<std::mutex> hold(_data->guard);
    if(_data->storeOf(id) != nullptr)
        _data->addFree(id);
}

FieldContainer *FieldContainerFactoryBase::getContainer(UInt32 id) const
{
    std::lock_guard<std::mutex> hold(_data->guard);
    AspectStore const *const store = _data->storeOf(id);
    return store != nullptr ? store->getPtr(Thread::getCurrentAspect()) : nullptr;
}

FieldContainer *FieldContainerFactoryBase::getMappedContainer(UInt32 id) const
{
    StreamIdMap const *const map = StreamIdMap::current();
    return map != nullptr ? map->find(id) : getContainer(id);
}

UInt32 FieldContainerFactoryBase::getNumContainers() const
{
    std::lock_guard<std::mutex> hold(_data->guard);
    return static_cast<UInt32>(_data->places.size() - 1 - _data->numFree);
}

std::vector<UInt32> FieldContainerFactoryBase::getIds() const
{
    std::lock_guard<std::mutex> hold(_data->guard);
    std::vector<UInt32> ids;
    for(UInt32 id = 1; id < _data->places.size(); ++id)
    {
        if(_data->storeOf(id) != nullptr)
            ids.push_back(id);
    }
    return ids;
}

std::vector<AspectStore *> FieldContainerFactoryBase::holdStores() const
{
    std::lock_guard<std::mutex> hold(_data->guard);
    std::vector<AspectStore *> stores;
    stores.reserve(_data->places.size());
    for(Data::Place const &place : _data->places)
    {
        if(AspectStore *const store = place.store())
        {
            store->addRef();
            stores.push_back(store);
        }
    }
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
