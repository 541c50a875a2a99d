#include "OSGSelectionFunctor.h"

#include <algorithm>
#include <cassert>
#include <unordered_set>

#include "OSGSelectionAction.h"

namespace OSG
{
using HitList = std::deque<SelectionFunctor::HitT>;

// --- creation and settings ---

SelectionFunctor::SelectionFunctor(SelectionAction *action, UInt32 selectionType,
                                   PlaneType planeType)
    : _action(action)
    , _selectionType(selectionType)
    , _planeType(planeType)
{
    assert(_action != nullptr);
    _action->setActor(this);
}

SelectionFunctor::SelectionFunctor()
    : SelectionFunctor(nullptr, SelectTriangles | SelectLines | SelectPoints, NearPlane)
{
}

SelectionFunctor::~SelectionFunctor() = default;

void SelectionFunctor::setAction(SelectionAction *action)
{
    _action = action;
    init();
}

void SelectionFunctor::init()
{
    assert(_action != nullptr);
    _action->setActor(this);
}

Plane const &SelectionFunctor::get_plane() const { return get_plane(*_action); }

Plane const &SelectionFunctor::get_plane(SelectionAction const &action) const
{
    bool const named = _planeType >= NearPlane && _planeType <= BottomPlane;
    return action.frustumVolume().getPlane(static_cast<UInt32>(named ? _planeType : NearPlane));
}

// --- results ---

HitList const &SelectionFunctor::hits(HitType type) const
{
    switch(type)
    {
    case FrontHits:
        return _frontHits;
    case BackHits:
        return _backHits;
    default:
        return _allHits;
    }
}

void SelectionFunctor::start()
{
    HitList().swap(_allHits);
    HitList().swap(_frontHits);
    HitList().swap(_backHits);
}

namespace
{
using HitPointers = std::vector<SelectionFunctor::HitT const *>;

/// The hit of each node that comes first in the range, in the order of the range.
template <class Iterator>
HitPointers first_of_each_node(Iterator begin, Iterator end)
{
    HitPointers result;
    std::unordered_set<Node const *, std::hash<Node const *>, std::equal_to<>,
                       MemAllocator<Node const *>>
        known;
    for(Iterator hit = begin; hit != end; ++hit)
    {
        if(known.insert(hit->node).second)
            result.push_back(&*hit);
    }
    return result;
}

void copy_to(HitList &list, HitPointers const &hits)
{
    for(SelectionFunctor::HitT const *hit : hits)
        list.push_back(*hit);
}
} // namespace

// All sorts are stable and no order rests on addresses, so that equal distances have the same order
// in every run.
void SelectionFunctor::stop()
{
    std::stable_sort(_allHits.begin(), _allHits.end(),
                     [](HitT const &a, HitT const &b) { return a.distance < b.distance; });
    copy_to(_frontHits, first_of_each_node(_allHits.begin(), _allHits.end()));

    HitPointers farthest = first_of_each_node(_allHits.rbegin(), _allHits.rend());
    std::reverse(farthest.begin(), farthest.end());
    std::stable_sort(farthest.begin(), farthest.end(),
                     [](HitT const *a, HitT const *b) { return a->distance > b->distance; });
    copy_to(_backHits, farthest);
}
} // namespace OSG
