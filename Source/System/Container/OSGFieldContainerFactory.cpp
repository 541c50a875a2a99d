#include "OSGFieldContainerFactory.h"

#include <deque>
#include <mutex>
#include <unordered_set>

#include "OSGFieldContainer.h"
#include "OSGThread.h"

namespace OSG
{
struct FieldContainerFactoryBase::Data
{
    mutable std::mutex guard;
    std::vector<AspectStore *, MemAllocator<AspectStore *>> stores{nullptr}; // by id
    std::deque<UInt32, MemAllocator<UInt32>> freeIds;
};

FieldContainerFactoryBase::FieldContainerFactoryBase() : _data(new Data) {}
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
    if(_data->freeIds.empty())
    {
        _data->stores.push_back(container->getAspectStore());
        return static_cast<UInt32>(_data->stores.size() - 1);
    }
    UInt32 const id = _data->freeIds.front();
    _data->freeIds.pop_front();
    _data->stores[id] = container->getAspectStore();
    return id;
}

void FieldContainerFactoryBase::deregisterContainer(UInt32 id)
{
    std::lock_guard<std::mutex> hold(_data->guard);
    if(id == 0 || id >= _data->stores.size() || _data->stores[id] == nullptr)
        return;
    _data->stores[id] = nullptr;
    _data->freeIds.push_back(id);
}

FieldContainer *FieldContainerFactoryBase::getContainer(UInt32 id) const
{
    std::lock_guard<std::mutex> hold(_data->guard);
    if(id >= _data->stores.size() || _data->stores[id] == nullptr)
        return nullptr;
    return _data->stores[id]->getPtr(Thread::getCurrentAspect());
}

FieldContainer *FieldContainerFactoryBase::getMappedContainer(UInt32 id) const
{
    return getContainer(id);
}

UInt32 FieldContainerFactoryBase::getNumContainers() const
{
    std::lock_guard<std::mutex> hold(_data->guard);
    return static_cast<UInt32>(_data->stores.size() - 1 - _data->freeIds.size());
}

std::vector<UInt32> FieldContainerFactoryBase::getIds() const
{
    std::lock_guard<std::mutex> hold(_data->guard);
    std::vector<UInt32> ids;
    for(UInt32 id = 1; id < _data->stores.size(); ++id)
    {
        if(_data->stores[id] != nullptr)
            ids.push_back(id);
    }
    return ids;
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
