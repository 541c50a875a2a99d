#include "OSGSimpleSelectionFunctor.h"

#include <boost/bind/bind.hpp>

#include "OSGGeometry.h"
#include "OSGSelectionAction.h"
#include "OSGSelectionSearch.h"

namespace OSG
{
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
Plane const *planes_of(SelectionAction const &action)
{
    return action.frustumVolume().getPlanes().data();
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
} // namespace OSG
