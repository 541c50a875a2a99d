#include "OSGRegionFunctor.h"

#include <boost/bind/bind.hpp>

#include "OSGGeometry.h"
#include "OSGRegionPart.h"
#include "OSGRootPlaces.h"
#include "OSGSearchExtremes.h"
#include "OSGSelectionAction.h"

namespace OSG
{
using SelectionSearch::PlainExtremes;
using SelectionSearch::TriangleExtremes;

namespace
{
/// Calls `visit` with each part of the geometry that meets the region, its corners and its grade,
/// until it returns false.
template <class Rule, class Visit>
void visit_parts(SelectionAction const &action, Geometry const &geometry, RegionPart &part,
                 RootPlaces const &places, Visit visit)
{
    Plane const *const planes = action.frustumVolume().getPlanes().data();
    for(PartCursor<Rule> it(geometry); !it.atEnd(); it.next())
    {
        Pnt3f corners[Rule::Corners];
        for(int i = 0; i < Rule::Corners; ++i)
            corners[i] = it.getPosition(i);
        if(!SelectionClipping::coarse_intersect(corners, Rule::Corners, planes, 6))
            continue;
        Pnt3d root[Rule::Corners];
        for(int i = 0; i < Rule::Corners; ++i)
            root[i] = places.of(corners[i]);
        RegionPart::Grade const grade = part.cut(corners, root, Rule::Corners);
        if(grade != RegionPart::Outside && !visit(it, corners, grade))
            return;
    }
}
} // namespace

RegionFunctor::RegionFunctor(SelectionAction *action)
    : SelectionHandlers(action, SelectTriangles, NearPlane)
{
    RegionFunctor::init();
}

RegionFunctor::~RegionFunctor() = default;

void RegionFunctor::init()
{
    using namespace boost::placeholders;
    SelectionFunctor::init();
    registerHandlers(boost::bind(&RegionFunctor::enterGeometry, this, _1, _2));
}

ActionBase::ResultE RegionFunctor::enterGeometry(NodeCore *core, Action *action)
{
    auto &selection = static_cast<SelectionAction &>(*action);
    if(outside_frustum(selection))
        return ActionBase::Skip;
    auto const &geometry = static_cast<Geometry const &>(*core);
    RegionPart part(*_region);
    RootPlaces const places(selection.topMatrix());
    UInt32 const kinds = getSelectionType();
    if(!_isExact)
    {
        if((kinds & SelectTriangles) != 0 && hasTriangle(selection, geometry, part, places))
            recordWithoutPlace(selection);
        return ActionBase::Continue;
    }
    if((kinds & SelectTriangles) != 0)
        findTriangles(selection, geometry, part, places);
    if((kinds & SelectLines) != 0)
        findLines(selection, geometry, part, places);
    if((kinds & SelectPoints) != 0)
        findPoints(selection, geometry, part, places);
    return ActionBase::Continue;
}

void RegionFunctor::findTriangles(SelectionAction const &action, Geometry const &geometry,
                                  RegionPart &part, RootPlaces const &places)
{
    TriangleExtremes extremes(get_plane(action));
    visit_parts<TriangleRule>(action, geometry, part, places,
                              [&](auto const &it, Pnt3f const *corners, RegionPart::Grade grade)
                              {
                                  if(grade == RegionPart::Contained)
                                      extremes.addContained(it, corners);
                                  else
                                      for(Pnt3f const &corner : part.corners())
                                          extremes.addClipped(it, corners, corner);
                                  return true;
                              });
    record(action, extremes.finish(geometry));
}

bool RegionFunctor::hasTriangle(SelectionAction const &action, Geometry const &geometry,
                                RegionPart &part, RootPlaces const &places) const
{
    bool found = false;
    visit_parts<TriangleRule>(action, geometry, part, places,
                              [&found](auto const &, Pnt3f const *, RegionPart::Grade)
                              {
                                  found = true;
                                  return false;
                              });
    return found;
}

// The normal is that of the end that is nearer to the place.
void RegionFunctor::findLines(SelectionAction const &action, Geometry const &geometry,
                              RegionPart &part, RootPlaces const &places)
{
    PlainExtremes extremes(get_plane(action));
    visit_parts<LineRule>(
        action, geometry, part, places,
        [&](auto const &it, Pnt3f const *ends, RegionPart::Grade grade)
        {
            auto const offer = [&](Pnt3f const &point)
            {
                int const end = point.dist(ends[0]) <= point.dist(ends[1]) ? 0 : 1;
                extremes.offer(point, it.getIndex(), it.getVertex(end));
            };
            if(grade == RegionPart::Contained)
                std::for_each(ends, ends + 2, offer);
            else
                std::for_each(part.corners().begin(), part.corners().end(), offer);
            return true;
        });
    record(action, extremes.finish(geometry));
}

void RegionFunctor::findPoints(SelectionAction const &action, Geometry const &geometry,
                               RegionPart &part, RootPlaces const &places)
{
    PlainExtremes extremes(get_plane(action));
    visit_parts<PointRule>(action, geometry, part, places,
                           [&](auto const &it, Pnt3f const *point, RegionPart::Grade)
                           {
                               extremes.offer(*point, it.getPrimitive(), it.getFirstVertex());
                               return true;
                           });
    record(action, extremes.finish(geometry));
}
} // namespace OSG
