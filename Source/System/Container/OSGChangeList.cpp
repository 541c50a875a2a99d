#include "OSGChangeList.h"

#include <algorithm>
#include <mutex>
#include <utility>

#include "OSGFieldConnector.h"
#include "OSGFieldContainer.h"
#include "OSGFieldContainerFactory.h"
#include "OSGThread.h"

namespace OSG
{
ChangeList::~ChangeList()
{
    for(FieldContainer *container : _changed)
    {
        if(container != nullptr)
            container->takeChangeMask();
    }
    dropDelayed();
    while(!_logs.empty())
        detach(_logs.back());
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
    // A `changed` that commits, as reading a file does: the walk below takes its edits too.
    if(_committing)
        return;
    _committing = true;
    struct Done
    {
        bool &committing;
        ~Done() { committing = false; }
    } const done{_committing};

    // By index: `changed` may edit further containers, or the same one again.
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
        // By its address alone: `changed` may have ended it, and its connections with it.
        if(isConnected)
            FieldConnectorFactoryBase::the()->process(container, mask);
    }
    _changed.clear();
    // What a load of a large scene took is given back; an editing session keeps its room.
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

namespace
{
struct ThreadState
{
    UInt32 aspect = 0;
    UInt64 localFlags = 0;
    ChangeList changes;
};

// The first thread's state is never destroyed: what a host holds in a static ends, and edits what
// is around it, after the objects of that thread.
ThreadState &make_state()
{
    static ThreadState *const first = new ThreadState;
    static bool firstIsTaken = false;
    static std::mutex mutex;
    std::lock_guard const lock(mutex);
    if(!std::exchange(firstIsTaken, true))
        return *first;
    static thread_local ThreadState own;
    return own;
}

ThreadState &this_thread()
{
    static thread_local ThreadState *state = nullptr;
    if(state == nullptr)
        state = &make_state();
    return *state;
}
} // namespace

UInt32 Thread::getCurrentAspect() { return this_thread().aspect; }
void Thread::setCurrentAspect(UInt32 aspect) { this_thread().aspect = aspect; }
ChangeList *Thread::getCurrentChangeList() { return &this_thread().changes; }
UInt64 Thread::getCurrentLocalFlags() { return this_thread().localFlags; }
void Thread::setCurrentLocalFlags(UInt64 flags) { this_thread().localFlags = flags; }
} // namespace OSG
