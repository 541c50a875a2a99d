#include "OSGStreamIdMap.h"

#include "OSGStaticTls.h"

namespace OSG
{
namespace
{
constinit OSG_STATIC_TLS thread_local StreamIdMap *innermost = nullptr;
} // namespace

StreamIdMap::StreamIdMap()
    : _outer(innermost)
{
    innermost = this;
}

StreamIdMap::~StreamIdMap() { innermost = _outer; }

void StreamIdMap::add(UInt32 streamId, FieldContainer *container)
{
    if(streamId == 0)
        return;
    if(streamId <= _inOrder.size())
        _inOrder[streamId - 1] = container;
    else if(streamId == _inOrder.size() + 1 && _others.empty())
        _inOrder.emplace_back(container);
    else
        _others[streamId] = container;
}

FieldContainer *StreamIdMap::find(UInt32 streamId) const
{
    // 0 wraps to the largest number.
    if(streamId - 1 < _inOrder.size())
        return _inOrder[streamId - 1];
    auto const found = _others.find(streamId);
    return found != _others.end() ? found->second.get() : nullptr;
}

StreamIdMap const *StreamIdMap::current() { return innermost; }
} // namespace OSG
