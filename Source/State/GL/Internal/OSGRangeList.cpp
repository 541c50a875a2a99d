#include "OSGRangeList.h"

#include <iterator>

namespace OSG
{
UInt32 RangeList::take(UInt32 count)
{
    if(count == 0)
        return 0;
    for(auto at = _free.begin(); at != _free.end(); ++at)
    {
        if(at->second < count)
            continue;
        UInt32 const first = at->first;
        if(at->second > count)
            _free.emplace_hint(std::next(at), first + count, at->second - count);
        _free.erase(at);
        _taken += count;
        return first;
    }
    return None;
}

void RangeList::giveBack(UInt32 first, UInt32 count)
{
    if(count == 0)
        return;
    _taken -= count;
    auto const after = _free.lower_bound(first);
    auto at = after;
    bool const joinsBefore =
        after != _free.begin() && std::prev(after)->first + std::prev(after)->second == first;
    if(joinsBefore)
    {
        at = std::prev(after);
        at->second += count;
    }
    else
        at = _free.emplace_hint(after, first, count);
    if(after != _free.end() && first + count == after->first)
    {
        at->second += after->second;
        _free.erase(after);
    }
}

UInt32 RangeList::takenEnd() const
{
    bool const endIsFree =
        !_free.empty() && std::prev(_free.end())->first + std::prev(_free.end())->second == _size;
    return endIsFree ? std::prev(_free.end())->first : _size;
}

void RangeList::cut(UInt32 size)
{
    UInt32 const end = takenEnd();
    if(end < _size)
        _free.erase(std::prev(_free.end()));
    if(end < size)
        _free.emplace_hint(_free.end(), end, size - end);
    _size = size;
}
} // namespace OSG
