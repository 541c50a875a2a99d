#include "OSGRangeList.h"

#include <iterator>
#include <utility>

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
        _taken.emplace(first, count);
        auto node = _free.extract(at);
        node.key() += count;
        node.mapped() -= count;
        if(node.mapped() > 0)
            _free.insert(std::move(node));
        return first;
    }
    return None;
}

// The entry goes from one map to the other, so that giving back needs no memory.
void RangeList::giveBack(UInt32 first, UInt32 count)
{
    if(count == 0)
        return;
    auto at = _free.insert(_taken.extract(first)).position;
    if(at != _free.begin() && std::prev(at)->first + std::prev(at)->second == first)
    {
        --at;
        at->second += count;
        _free.erase(std::next(at));
    }
    auto const after = std::next(at);
    if(after != _free.end() && at->first + at->second == after->first)
    {
        at->second += after->second;
        _free.erase(after);
    }
}

UInt32 RangeList::takenEnd() const
{
    return _taken.empty() ? 0 : std::prev(_taken.end())->first + std::prev(_taken.end())->second;
}

void RangeList::cut(UInt32 size)
{
    UInt32 const end = takenEnd();
    auto const last = _free.find(end);
    if(last == _free.end())
        return;
    if(size > end)
        last->second = size - end;
    else
        _free.erase(last);
}
} // namespace OSG
