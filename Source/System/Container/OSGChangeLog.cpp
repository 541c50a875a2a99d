#include "OSGChangeLog.h"

#include <new>

#include "OSGChangeList.h"
#include "OSGFieldContainer.h"

namespace OSG
{
std::atomic<Int32> ChangeLog::_numOpen{0};

ChangeLog::~ChangeLog()
{
    if(_list != nullptr)
        _list->detach(this);
    clear();
}

void ChangeLog::clear()
{
    for(Entry const &entry : _entries)
        entry.store->release();
    _entries.clear();
    _complete = true;
}

void ChangeLog::add(FieldContainer const *container, Kind kind, BitVector mask) noexcept
{
    if(container->getAspect() != _giverAspect || container->getId() == 0)
        return;
    try
    {
        // The step that may run out of memory comes before the reference is counted.
        if(_entries.size() == _entries.capacity())
            _entries.reserve(2 * _entries.size() + 64);
        AspectStore *const store = container->getAspectStore();
        store->addRef();
        _entries.push_back({store, kind, mask});
    }
    catch(std::bad_alloc const &)
    {
        _complete = false;
    }
}
} // namespace OSG
