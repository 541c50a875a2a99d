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
    AspectStore *const store = container->getAspectStore();
    if(store == nullptr || store->aspectOf(container) != _giverAspect)
        return;
    try
    {
        _entries.push_back({store, kind, mask});
        store->addRef();
    }
    catch(std::bad_alloc const &)
    {
        _complete = false;
    }
}
} // namespace OSG
