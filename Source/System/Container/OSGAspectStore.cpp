#include "OSGAspectStore.h"

#include <algorithm>
#include <mutex>

#include "OSGFieldContainer.h"

namespace OSG
{
void AspectStore::lock() const
{
    while(_busy.test_and_set(std::memory_order_acquire))
        _busy.wait(true, std::memory_order_relaxed);
}

void AspectStore::unlock() const
{
    _busy.clear(std::memory_order_release);
    _busy.notify_one();
}

FieldContainer *AspectStore::getPtr(UInt32 aspect) const
{
    std::lock_guard<AspectStore const> hold(*this);
    if(aspect == 0)
        return _first;
    return _others != nullptr && aspect <= _others->size() ? (*_others)[aspect - 1] : nullptr;
}

void AspectStore::setPtrForAspect(FieldContainer *container, UInt32 aspect)
{
    std::lock_guard<AspectStore const> hold(*this);
    if(aspect == 0)
    {
        _first = container;
        return;
    }
    if(container == nullptr && (_others == nullptr || _others->size() < aspect))
        return;
    if(_others == nullptr)
        _others = new std::vector<FieldContainer *, MemAllocator<FieldContainer *>>;
    if(_others->size() < aspect)
        _others->resize(aspect, nullptr);
    (*_others)[aspect - 1] = container;
}

// The caller holds the lock.
UInt32 AspectStore::findAspect(FieldContainer const *container) const
{
    if(container == _first)
        return 0;
    for(std::size_t i = 0; _others != nullptr && i < _others->size(); ++i)
    {
        if((*_others)[i] == container)
            return static_cast<UInt32>(i + 1);
    }
    return NoAspect;
}

UInt32 AspectStore::aspectOf(FieldContainer const *container) const
{
    std::lock_guard<AspectStore const> hold(*this);
    return findAspect(container);
}

bool AspectStore::removePtr(FieldContainer const *container)
{
    std::lock_guard<AspectStore const> hold(*this);
    UInt32 const aspect = findAspect(container);
    if(aspect == NoAspect)
        return false;
    (aspect == 0 ? _first : (*_others)[aspect - 1]) = nullptr;
    return _first == nullptr && (_others == nullptr || std::all_of(_others->begin(), _others->end(),
                                                                   [](FieldContainer const *copy)
                                                                   { return copy == nullptr; }));
}

void AspectStore::addRef() { _references.fetch_add(1, std::memory_order_relaxed); }

void AspectStore::release()
{
    if(_references.fetch_sub(1, std::memory_order_acq_rel) == 1)
    {
        delete _others;
        delete this;
    }
}

void AspectStore::fillOffsetArray(std::vector<Int64> &offsets, FieldContainer *container) const
{
    std::lock_guard<AspectStore const> hold(*this);
    std::size_t const aspects = 1 + (_others != nullptr ? _others->size() : 0);
    offsets.assign(aspects, 0);
    auto const distance = [container](FieldContainer *copy) -> Int64
    {
        return copy == nullptr
                   ? 0
                   : reinterpret_cast<char *>(copy) - reinterpret_cast<char *>(container);
    };
    offsets[0] = distance(_first);
    for(std::size_t i = 1; i < aspects; ++i)
        offsets[i] = distance((*_others)[i - 1]);
}
} // namespace OSG
