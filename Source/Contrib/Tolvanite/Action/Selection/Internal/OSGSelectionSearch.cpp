#include "OSGSelectionSearch.h"

#include "OSGIndexedSearch.h"
#include "OSGPlainSearch.h"
#include "OSGPrimitiveIndexUse.h"

namespace OSG::SelectionSearch
{
namespace
{
bool may_use_index(Way const *way, Plane const *planes, Plane const &plane)
{
    return (way == nullptr || way->mayUseIndex) && Indexed::can_search(planes, plane);
}

/// Searches through the geometry's index if it has one, else by the plain loop.
template <class ByIndex, class ByLoop>
auto search(Geometry const &geometry, IndexedKind kind, Way *way, ByIndex byIndex, ByLoop byLoop)
{
    PrimitiveIndexUse use(geometry, kind);
    if(PrimitiveIndex const *const index = use.getIndex())
    {
        if(way != nullptr)
            way->usedIndex = true;
        return byIndex(*index);
    }
    return byLoop(use);
}

template <class ByIndex, class ByLoop>
Extremes find(Geometry const &geometry, IndexedKind kind, Plane const *planes, Plane const &plane,
              Way *way, ByIndex byIndex, ByLoop byLoop)
{
    if(!may_use_index(way, planes, plane))
        return byLoop(geometry, planes, plane);
    return search(
        geometry, kind, way,
        [&](PrimitiveIndex const &index) { return byIndex(index, geometry, planes, plane); },
        [&](PrimitiveIndexUse &use)
        {
            use.addFullLoop();
            return byLoop(geometry, planes, plane);
        });
}
} // namespace

Extremes find_triangles(Geometry const &geometry, Plane const *planes, Plane const &plane, Way *way)
{
    return find(geometry, IndexedKind::Triangles, planes, plane, way, &Indexed::find_triangles,
                &Plain::find_triangles);
}

Extremes find_lines(Geometry const &geometry, Plane const *planes, Plane const &plane, Way *way)
{
    return find(geometry, IndexedKind::Lines, planes, plane, way, &Indexed::find_lines,
                &Plain::find_lines);
}

Extremes find_points(Geometry const &geometry, Plane const *planes, Plane const &plane, Way *way)
{
    return find(geometry, IndexedKind::Points, planes, plane, way, &Indexed::find_points,
                &Plain::find_points);
}

bool has_triangle(Geometry const &geometry, Plane const *planes, Way *way)
{
    UInt32 tested = 0;
    if(!may_use_index(way, planes, planes[0]))
        return Plain::has_triangle(geometry, planes, tested);
    return search(
        geometry, IndexedKind::Triangles, way,
        [&](PrimitiveIndex const &index) { return Indexed::has_triangle(index, geometry, planes); },
        [&](PrimitiveIndexUse &use)
        {
            bool const found = Plain::has_triangle(geometry, planes, tested);
            if(found)
                use.addWork(tested);
            else
                use.addFullLoop();
            return found;
        });
}
} // namespace OSG::SelectionSearch
