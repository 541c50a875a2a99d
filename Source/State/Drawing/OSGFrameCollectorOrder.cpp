// The order in which a frame draws what it shows.

#include <algorithm>
#include <limits>
#include <tuple>

#include "OSGBits.h"
#include "OSGFrameCollector.h"

namespace OSG
{
bool FrameCollector::isTransparent(UInt32 state) const
{
    DrawStateTable const &states = _cache.getStates();
    return states.getStates()[states.stateOf(state)]->isTransparent();
}

DrawItem FrameCollector::itemOf(SceneRecord::Item const &item, UInt32 state) const
{
    return {item.shape, item.space, _cache.getStates().stateOf(state),
            _listHeadlight ? 0 : _lightSets.setOf(item.light)};
}

DrawItem FrameCollector::itemOf(Found const &found) const
{
    UInt32 const firstSpace = static_cast<UInt32>(_cache.getRecord().spaces.size());
    return {found.shape, firstSpace + found.space, _cache.getStates().stateOf(found.state),
            _listHeadlight ? 0 : _lightSets.setOf(found.light)};
}

// States have their places in the order of first use.
void FrameCollector::rankFound()
{
    std::vector<UInt32> const &known = _cache.getStateRanks();
    _ranks.assign(_found.empty() ? 0 : _list.states.size(), SceneCache::NoRank);
    UInt32 next = static_cast<UInt32>(known.size());
    for(Found const &found : _found)
    {
        UInt32 const state = _cache.getStates().stateOf(found.state);
        if((state >= known.size() || known[state] == SceneCache::NoRank) &&
           _ranks[state] == SceneCache::NoRank)
            _ranks[state] = next++;
    }
}

UInt32 FrameCollector::rankOf(UInt32 state) const
{
    std::vector<UInt32> const &known = _cache.getStateRanks();
    return state < known.size() && known[state] != SceneCache::NoRank ? known[state]
                                                                      : _ranks[state];
}

bool FrameCollector::Ranked::operator<(Ranked const &other) const
{
    return std::tie(sortKey, rank, layout) < std::tie(other.sortKey, other.rank, other.layout);
}

FrameCollector::Ranked FrameCollector::ranked(DrawItem const &item, UInt32 state) const
{
    return {_cache.getStates().sortKeyOf(state), rankOf(item.state),
            _list.shapes[item.shape]->getMeshLayout(), item};
}

// What is not drawn as it was recorded: items in other states, and what was found for the view.
std::vector<FrameCollector::Ranked> FrameCollector::rankOthers()
{
    rankFound();
    SceneRecord const &record = _cache.getRecord();
    std::vector<Ranked> others;
    for(DressedRecord::Item const &dressed : _cache.getDressedOpaque())
    {
        if(isSeen(dressed.item))
            others.push_back(
                ranked(itemOf(record.items[dressed.item], dressed.state), dressed.state));
    }
    auto const numDressed = static_cast<std::ptrdiff_t>(others.size());
    for(Found const &found : _found)
    {
        if(!isTransparent(found.state))
            others.push_back(ranked(itemOf(found), found.state));
    }
    auto const firstFound = others.begin() + numDressed;
    std::stable_sort(firstFound, others.end());
    std::inplace_merge(others.begin(), firstFound, others.end());
    return others;
}

// The others take their places among equal states.
void FrameCollector::makeOpaque()
{
    std::vector<Ranked> const others = rankOthers();
    _list.opaque.clear();
    auto next = others.begin();
    SceneRecord const &record = _cache.getRecord();
    for_each_bit(_seen,
                 [&](UInt32 place)
                 {
                     if(place >= _cache.getNumOpaque())
                         return;
                     SceneRecord::Item const &item = record.items[_cache.getOrder()[place]];
                     DrawItem const drawn = itemOf(item, item.state);
                     if(next != others.end())
                     {
                         Ranked const here = ranked(drawn, item.state);
                         for(; next != others.end() && *next < here; ++next)
                             _list.opaque.push_back(next->item);
                     }
                     _list.opaque.push_back(drawn);
                 });
    for(; next != others.end(); ++next)
        _list.opaque.push_back(next->item);
}

Real32 FrameCollector::depthOf(UInt32 item) const
{
    SceneRecord const &record = _cache.getRecord();
    BoxVolume const &box = record.boxes[item];
    Pnt3f centre;
    if(box.isInfinite())
        centre = record.spaces[record.items[item].space].toRoot * centre;
    else
        box.getCenter(centre);
    return static_cast<Real32>(-(_viewing * Pnt3d(centre[0], centre[1], centre[2]))[2]);
}

void FrameCollector::makeTransparent()
{
    SceneRecord const &record = _cache.getRecord();
    _depths.clear();
    for(UInt32 place = _cache.getNumOpaque(); place < record.items.size(); ++place)
    {
        if((_seen[place / 64] >> place % 64 & 1) == 0)
            continue;
        UInt32 const item = _cache.getOrder()[place];
        _depths.push_back(
            {depthOf(item), record.items[item].entry, item, record.items[item].state, false});
    }
    for(DressedRecord::Item const &dressed : _cache.getDressedTransparent())
    {
        if(isSeen(dressed.item))
            _depths.push_back({depthOf(dressed.item), record.items[dressed.item].entry,
                               dressed.item, dressed.state, false});
    }
    for(UInt32 i = 0; i < _found.size(); ++i)
    {
        if(isTransparent(_found[i].state))
            _depths.push_back({_found[i].depth, _found[i].entry, i, _found[i].state, true});
    }
    // A depth that is NaN would not be ordered: it counts as the nearest.
    for(Depth &depth : _depths)
        depth.depth =
            depth.depth == depth.depth ? depth.depth : -std::numeric_limits<Real32>::max();
    std::sort(_depths.begin(), _depths.end(),
              [](Depth const &a, Depth const &b) {
                  return std::tie(b.depth, a.entry, a.place) < std::tie(a.depth, b.entry, b.place);
              });
    _list.transparent.clear();
    for(Depth const &depth : _depths)
        _list.transparent.push_back(depth.isFound ? itemOf(_found[depth.place])
                                                  : itemOf(record.items[depth.place], depth.state));
}
} // namespace OSG
