#include "OSGSimpleSelectionFunctor.h"

#include <boost/bind/bind.hpp>

#include "OSGGeometry.h"
#include "OSGSelectionAction.h"
#include "OSGSelectionSearch.h"

namespace OSG
{
using SelectionSearch::Extreme;
using SelectionSearch::Extremes;

SimpleSelectionFunctor::SimpleSelectionFunctor(SelectionAction *action, UInt32 selectionType,
                                               PlaneType planeType)
    : SelectionHandlers(action, selectionType, planeType)
{
    SimpleSelectionFunctor::init();
}

SimpleSelectionFunctor::SimpleSelectionFunctor() { SimpleSelectionFunctor::init(); }
SimpleSelectionFunctor::~SimpleSelectionFunctor() = default;

void SimpleSelectionFunctor::init()
{
    using namespace boost::placeholders;
    if(getAction() == nullptr)
        return;
    SelectionFunctor::init();
    registerHandlers(boost::bind(&SimpleSelectionFunctor::enterGeometry, this, _1, _2));
}

ActionBase::ResultE SimpleSelectionFunctor::enterGeometry(NodeCore *core, Action *action)
{
    auto &selection = static_cast<SelectionAction &>(*action);
    if(outside_frustum(selection))
        return ActionBase::Skip;
    auto const *const geometry = static_cast<Geometry const *>(core);
    Plane const &plane = get_plane(selection);
    SelectionSearch::Way way{selection.getUsePrimitiveIndex()};
    if((getSelectionType() & SelectTriangles) != 0)
        triangles(selection, plane, geometry, way);
    if((getSelectionType() & SelectLines) != 0)
        lines(selection, plane, geometry, way);
    if((getSelectionType() & SelectPoints) != 0)
        points(selection, plane, geometry, way);
    if(way.usedIndex)
        selection.countIndexed();
    return ActionBase::Continue;
}

// --- workers ---

namespace
{
// Points whose coordinates differ by no more than this are the same place.
constexpr Real32 SamePlaceEpsilon = 1e-6f;

Plane const *planes_of(SelectionAction const &action)
{
    return action.frustumVolume().getPlanes().data();
}

SelectionRecords::Record record_of(SelectionAction const &action, Extreme const &extreme)
{
    Pnt3f point;
    action.topMatrix().multFull(extreme.point, point);
    return {extreme.distance, extreme.index, 0, extreme.hasPoint, point, extreme.normal};
}
} // namespace

void SimpleSelectionFunctor::triangles(SelectionAction const &action, Plane const &plane,
                                       Geometry const *geometry, SelectionSearch::Way &way)
{
    record(action, SelectionSearch::find_triangles(*geometry, planes_of(action), plane, &way));
}

void SimpleSelectionFunctor::lines(SelectionAction const &action, Plane const &plane,
                                   Geometry const *geometry, SelectionSearch::Way &way)
{
    record(action, SelectionSearch::find_lines(*geometry, planes_of(action), plane, &way));
}

void SimpleSelectionFunctor::points(SelectionAction const &action, Plane const &plane,
                                    Geometry const *geometry, SelectionSearch::Way &way)
{
    record(action, SelectionSearch::find_points(*geometry, planes_of(action), plane, &way));
}

void SimpleSelectionFunctor::record(SelectionAction const &action, Extremes const &extremes)
{
    bool const hasNear = extremes.near.index > -1;
    bool const hasFar = extremes.far.index > -1 &&
                        !extremes.near.point.equals(extremes.far.point, SamePlaceEpsilon);
    if(hasNear || hasFar)
        record_here(action);
    if(hasNear)
        records().addFirst(record_of(action, extremes.near));
    if(hasFar)
        records().addLast(record_of(action, extremes.far));
}
} // namespace OSG
