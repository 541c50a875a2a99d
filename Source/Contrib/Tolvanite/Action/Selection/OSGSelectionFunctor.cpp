#include "OSGSelectionFunctor.h"

#include <cassert>

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
    HitType const known = type == FrontHits || type == BackHits ? type : AllHits;
    Results &results = _results[known];
    if(results.isMade)
        return results.hits;
    HitList made;
    SelectionRecords::Order const order = orderOf(known);
    for(std::size_t i = 0; i < order.size(); ++i)
    {
        _records.fetchAhead(order, i);
        fill(made.emplace_back(), order[i]);
    }
    results.hits.swap(made);
    results.isMade = _isStopped; // else more hits may follow
    return results.hits;
}

// All sorts are stable and no order depends on addresses, so hits of equal distance have the same
// order in every run. A walk that was broken off leaves its hits as they were recorded.
SelectionRecords::Order SelectionFunctor::orderOf(HitType type) const
{
    if(type == FrontHits)
        return _isStopped ? _records.nearestOfNodes() : SelectionRecords::Order();
    if(type == BackHits)
        return _isStopped ? _records.farthestOfNodes() : SelectionRecords::Order();
    return _isStopped ? _records.sorted() : _records.recorded();
}

void SelectionFunctor::fill(HitT &hit, UInt32 place) const
{
    SelectionRecords::Record const &record = _records.record(place);
    SelectionRecords::Visit const &visit = _records.visitOf(record);
    hit.selectionType = visit.selectionType;
    hit.point = record.point;
    hit.normal = record.normal;
    hit.node = visit.node;
    hit.index = record.index;
    hit.hasPoint = record.hasPoint;
    hit.distance = record.distance;
    hit.matrix = visit.matrix;
    if(visit.path != 0)
        hit.visitSubTreeNodes = _records.pathOf(visit);
}

void SelectionFunctor::Results::clear()
{
    constexpr std::size_t KeptHits = 64;
    isMade = false;
    if(hits.size() > KeptHits)
        HitList().swap(hits);
    else
        hits.clear();
}

void SelectionFunctor::start()
{
    for(Results &results : _results)
        results.clear();
    _records.clear();
    _isStopped = false;
}

void SelectionFunctor::stop()
{
    for(Results &results : _results)
        results.clear();
    _isStopped = true;
}
} // namespace OSG
