#include "OSGChangeList.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <new>

#include "OSGFieldConnector.h"
#include "OSGFieldContainer.h"
#include "OSGFieldContainerFactory.h"

namespace OSG
{
ChangeList *ChangeList::_all[MaxLists + 1] = {};
constinit std::atomic<UInt32> ChangeList::_numDropped = 0;

namespace
{
constinit std::mutex numbers_guard;
} // namespace

ChangeList::ChangeList()
{
    std::lock_guard const hold(numbers_guard);
    auto *const place = std::find(std::begin(_all) + 1, std::end(_all), nullptr);
    if(place == std::end(_all))
        throw std::bad_alloc();
    *place = this;
    _number = static_cast<UInt32>(place - std::begin(_all));
}

ChangeList::~ChangeList()
{
    // Dropping references destroys containers, which may edit other containers.
    while(!_changed.empty() || !_delayed.empty())
    {
        dropEdits();
        dropDelayed();
    }
    while(!_logs.empty())
        detach(_logs.back());
    std::lock_guard const hold(numbers_guard);
    _all[_number] = nullptr;
}

void ChangeList::dropEdits()
{
    for(FieldContainer *container : _changed)
    {
        if(container != nullptr)
        {
            container->takeChangeMask();
            _numDropped.fetch_add(1, std::memory_order_relaxed);
        }
    }
    _changed.clear();
}

void ChangeList::attach(ChangeLog *log)
{
    _logs.push_back(log);
    log->_list = this;
    ChangeLog::_numOpen.fetch_add(1, std::memory_order_relaxed);
}

void ChangeList::detach(ChangeLog *log)
{
    _logs.erase(std::remove(_logs.begin(), _logs.end(), log), _logs.end());
    log->_list = nullptr;
    ChangeLog::_numOpen.fetch_sub(1, std::memory_order_relaxed);
}

void ChangeList::addCreated(UInt32 id, UInt64)
{
    ++_numCreated;
    FieldContainer const *const container =
        _logs.empty() ? nullptr : FieldContainerFactoryBase::the()->getContainer(id);
    if(container != nullptr)
        addToLogs(container, ChangeLog::Kind::Created);
}

UInt32 ChangeList::addChanged(FieldContainer *container)
{
    _changed.push_back(container);
    return static_cast<UInt32>(_changed.size() - 1);
}

void ChangeList::addDelayed(FieldContainer *container, SubRef subRef)
{
    _delayed.push_back({container, subRef});
}

void ChangeList::commitChanges(UInt32 origin, UInt32 details) { doCommitChanges(origin, details); }

namespace
{
constexpr std::size_t KeptPlaces = 4096;
} // namespace

void ChangeList::doCommitChanges(UInt32 origin, UInt32 details)
{
    // A `changed` may commit itself, for example when it reads a file. The loop that is under way
    // publishes those edits.
    if(_committing)
        return;
    _committing = true;
    struct Done
    {
        bool &committing;
        ~Done() { committing = false; }
    } const done{_committing};

    // The list grows while it is walked: `changed` may edit other containers, or the same one
    // again.
    for(std::size_t i = 0; i < _changed.size(); ++i)
    {
        FieldContainer *container = _changed[i];
        if(container == nullptr)
            continue;
        _changed[i] = nullptr;
        BitVector const mask = container->takeChangeMask();
        addToLogs(container, ChangeLog::Kind::Changed, mask);
        bool const isConnected = container->isConnected();
        container->changed(mask, origin, details);
        // `changed` may have destroyed the container. `process` uses its address only as a key.
        if(isConnected)
            FieldConnectorFactoryBase::the()->process(container, mask);
    }
    _changed.clear();
    // The room that loading a large scene needed is given back. An editing session keeps its own.
    if(_changed.capacity() > KeptPlaces)
        _changed.shrink_to_fit();
    _numCreated = 0;
    dropDelayed();
}

void ChangeList::dropDelayed()
{
    std::vector<Delayed, MemAllocator<Delayed>> delayed;
    delayed.swap(_delayed);
    for(Delayed const &entry : delayed)
        entry.subRef(entry.container);
}
} // namespace OSG
