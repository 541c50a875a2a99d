#include "OSGStreamIdMap.h"

namespace OSG
{
namespace
{
thread_local StreamIdMap *innermost = nullptr;
} // namespace

StreamIdMap::StreamIdMap()
    : _outer(innermost)
{
    innermost = this;
}

StreamIdMap::~StreamIdMap() { innermost = _outer; }

void StreamIdMap::add(UInt32 streamId, FieldContainer *container)
{
    if(streamId != 0)
        _containers[streamId] = container;
}

FieldContainer *StreamIdMap::find(UInt32 streamId) const
{
    auto const found = _containers.find(streamId);
    return found != _containers.end() ? found->second.get() : nullptr;
}

StreamIdMap const *StreamIdMap::current() { return innermost; }
} // namespace OSG
