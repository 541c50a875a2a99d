#include "OSGFastSelectionFunctor.h"

#include <boost/bind/bind.hpp>

#include "OSGGeometry.h"
#include "OSGSelectionAction.h"
#include "OSGSelectionSearch.h"

namespace OSG
{
FastSelectionFunctor::FastSelectionFunctor(SelectionAction *action)
    : SelectionHandlers(action, SelectTriangles, NearPlane)
{
    FastSelectionFunctor::init();
}

FastSelectionFunctor::FastSelectionFunctor() { FastSelectionFunctor::init(); }
FastSelectionFunctor::~FastSelectionFunctor() = default;

void FastSelectionFunctor::init()
{
    using namespace boost::placeholders;
    if(getAction() == nullptr)
        return;
    SelectionFunctor::init();
    registerHandlers(boost::bind(&FastSelectionFunctor::enterGeometry, this, _1, _2));
}

ActionBase::ResultE FastSelectionFunctor::enterGeometry(NodeCore *core, Action *action)
{
    auto &selection = static_cast<SelectionAction &>(*action);
    if(outside_frustum(selection))
        return ActionBase::Skip;
    if((getSelectionType() & SelectTriangles) != 0)
        triangles(selection, get_plane(selection), static_cast<Geometry const *>(core));
    return ActionBase::Continue;
}

void FastSelectionFunctor::triangles(SelectionAction &action, Plane const &,
                                     Geometry const *geometry)
{
    SelectionSearch::Way way{action.getUsePrimitiveIndex()};
    bool const isHit =
        SelectionSearch::has_triangle(*geometry, action.frustumVolume().getPlanes().data(), &way);
    if(way.usedIndex)
        action.countIndexed();
    if(isHit)
        recordWithoutPlace(action);
}
} // namespace OSG
