#include "OSGPickRegion.h"

#include <algorithm>
#include <cmath>

#include "OSGPartCursor.h"
#include "OSGRootPlaces.h"

namespace OSG
{
namespace
{
std::vector<HalfSpace> half_spaces_of(Frustum const &solid)
{
    // The same corners as in Frustum::Volume.
    Frustum const &s = solid;
    return {half_space_through(s.nlb(), s.nlt(), s.nrb()),
            half_space_through(s.frb(), s.frt(), s.flb()),
            half_space_through(s.flb(), s.flt(), s.nlb()),
            half_space_through(s.nrb(), s.nrt(), s.frb()),
            half_space_through(s.frt(), s.nrt(), s.flt()),
            half_space_through(s.nlb(), s.nrb(), s.flb())};
}

std::vector<Pnt2f> corners_of(PixelArea const &area)
{
    return {{area.left, area.top},
            {area.right, area.top},
            {area.right, area.bottom},
            {area.left, area.bottom}};
}

bool is_between(Pnt2f const &a, Pnt2f const &point, Pnt2f const &b)
{
    auto const isBetween = [&](UInt32 axis) {
        return std::min(a[axis], b[axis]) <= point[axis] &&
               point[axis] <= std::max(a[axis], b[axis]);
    };
    bool const isAlongAxis =
        (a[0] == point[0] && point[0] == b[0]) || (a[1] == point[1] && point[1] == b[1]);
    return isAlongAxis && isBetween(0) && isBetween(1);
}

// Without corners that lie on a side of the window's direction between their neighbours.
std::vector<Pnt2f> real_corners(std::vector<Pnt2f> const &lasso)
{
    std::vector<Pnt2f> corners;
    for(Pnt2f const &point : lasso)
    {
        while(corners.size() > 1 && is_between(corners[corners.size() - 2], corners.back(), point))
            corners.pop_back();
        if(corners.empty() || !(corners.back() == point))
            corners.push_back(point);
    }
    while(corners.size() > 2 &&
          (corners.back() == corners.front() ||
           is_between(corners[corners.size() - 2], corners.back(), corners.front())))
        corners.pop_back();
    while(corners.size() > 2 && is_between(corners.back(), corners[0], corners[1]))
        corners.erase(corners.begin());
    return corners;
}

std::optional<PixelArea> rectangle_of(std::vector<Pnt2f> const &lasso)
{
    std::vector<Pnt2f> const c = real_corners(lasso);
    bool const isRectangle =
        c.size() == 4 &&
        ((c[0][0] == c[1][0] && c[1][1] == c[2][1] && c[2][0] == c[3][0] && c[3][1] == c[0][1]) ||
         (c[0][1] == c[1][1] && c[1][0] == c[2][0] && c[2][1] == c[3][1] && c[3][0] == c[0][0]));
    if(!isRectangle)
        return std::nullopt;
    return pixel_rectangle(c[0][0], c[0][1], c[2][0], c[2][1]);
}

Real64 unit_at(Real32 number) { return Real64(std::nextafter(number, INFINITY)) - number; }

Real32 largest_of(Pnt3f const &point)
{
    return std::max({std::abs(point[0]), std::abs(point[1]), std::abs(point[2])});
}

// A rectangle that is so much wider than the area that the solid behind it holds what lies within a
// rounding of the area's edge.
PixelArea around(PixelBox const &box, WindowView const &view, SceneBounds const &bounds)
{
    constexpr Real64 Wider = 2; // pixels; see pick_depths
    constexpr Real64 UnitsWider = 16;
    Real64 wider = Wider;
    if(view.orthographicHeight)
    {
        Real32 largest = largest_of(view.from);
        if(!bounds.box.isEmpty())
            largest = std::max(
                {largest, largest_of(bounds.box.getMin()), largest_of(bounds.box.getMax())});
        wider += UnitsWider * unit_at(largest) * view.height / *view.orthographicHeight;
    }
    PixelBox const wide = box.grownBy(wider);
    return {static_cast<Real32>(wide.left), static_cast<Real32>(wide.top),
            static_cast<Real32>(wide.right), static_cast<Real32>(wide.bottom)};
}

// Corners that round to nearly the same point give planes in arbitrary directions.
bool are_apart(Pnt3f const &a, Pnt3f const &b)
{
    constexpr Real64 UnitsApart = 16;
    Real64 const unit = unit_at(std::max(largest_of(a), largest_of(b)));
    return (wide(a) - wide(b)).length() >= UnitsApart * unit;
}

bool has_planes(Frustum const &solid)
{
    return are_apart(solid.nlb(), solid.nrb()) && are_apart(solid.nlb(), solid.nlt()) &&
           are_apart(solid.flb(), solid.frb()) && are_apart(solid.flb(), solid.flt());
}

template <class Rule>
bool all_inside(PickRegion const &region, Geometry const &geometry, RootPlaces const &places)
{
    for(PartCursor<Rule> it(geometry); !it.atEnd(); it.next())
        for(int i = 0; i < Rule::Corners; ++i)
            if(!region.contains(places.of(it.getPosition(i))))
                return false;
    return true;
}
} // namespace

PickRegion::PickRegion(Frustum const &solid)
    : _solid(solid)
    , _halfSpaces(half_spaces_of(solid))
{
}

std::optional<PickRegion> PickRegion::inView(WindowView const &view, PixelArea const &around,
                                             std::shared_ptr<PixelPolygon const> area,
                                             SceneBounds const &bounds, Real32 radius)
{
    std::optional<ViewDepths> const depths = pick_depths(view, bounds, radius);
    std::optional<Frustum> const solid = pick_volume(view, around, bounds, radius);
    if(!solid || !depths || area->isEmpty())
        return std::nullopt;
    PickRegion region;
    region._solid = *solid;
    region._eye = view.from;
    region._window.emplace(view);
    region._halfSpaces = {region._window->behind(depths->nearSide),
                          region._window->before(depths->farSide)};
    region._area = std::move(area);
    return region;
}

std::optional<PickRegion> PickRegion::ofRectangle(WindowView const &view, PixelArea const &area,
                                                  SceneBounds const &bounds, Real32 radius)
{
    auto const polygon = std::make_shared<PixelPolygon const>(corners_of(area));
    std::optional<PickRegion> region = inView(view, area, polygon, bounds, radius);
    if(!region || has_planes(region->_solid))
        return region;
    region = inView(view, around(polygon->getBox(), view, bounds), polygon, bounds, radius);
    if(region)
        region->_isSolid = false;
    return region;
}

std::optional<PickRegion> PickRegion::ofLasso(WindowView const &view,
                                              std::vector<Pnt2f> const &lasso,
                                              SceneBounds const &bounds, Real32 radius)
{
    if(std::optional<PixelArea> const area = rectangle_of(lasso))
        return ofRectangle(view, *area, bounds, radius);
    auto const area = std::make_shared<PixelPolygon const>(lasso);
    if(area->isEmpty())
        return std::nullopt;
    std::optional<PickRegion> region =
        inView(view, around(area->getBox(), view, bounds), area, bounds, radius);
    if(region)
        region->_isSolid = false;
    return region;
}

void PickRegion::cut(SectionPlanes const &planes)
{
    for(Plane const &plane : planes.getPlanes())
        _halfSpaces.push_back(half_space_of(plane));
    _isSolid = _isSolid && planes.isEmpty();
}

bool PickRegion::contains(Pnt3d const &point) const
{
    if(!is_finite(point))
        return false;
    for(HalfSpace const &half : _halfSpaces)
        if(!half.holds(point))
            return false;
    return !_window || _area->contains(_window->placeOf(point).pixel);
}

bool is_enclosed(PickRegion const &region, Geometry const &geometry, Matrix const &toRoot)
{
    RootPlaces const places(toRoot);
    return all_inside<TriangleRule>(region, geometry, places) &&
           all_inside<LineRule>(region, geometry, places) &&
           all_inside<PointRule>(region, geometry, places);
}
} // namespace OSG
