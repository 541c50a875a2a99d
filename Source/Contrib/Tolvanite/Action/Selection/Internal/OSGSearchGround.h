#pragma once

/// \file
/// What a search through an index knows of its volume and its geometry.

#include <cmath>

#include "OSGBoxWalk.h"
#include "OSGFrustumLanes.h"

namespace OSG::SelectionSearch::Indexed
{
inline constexpr UInt32 AllPlanes = 0x3F;

/// What a search knows of its volume and its geometry.
template <class Rule>
struct Ground
{
    Ground(PrimitiveIndex const &searched, Geometry const &geometry, Plane const *sixPlanes,
           Plane const &plane)
        : index(searched)
        , planes(sixPlanes)
        , reference(plane)
        , lanes(sixPlanes)
        , reader(searched, geometry)
    {
        for(UInt32 k = 0; k < 6; ++k)
        {
            boxPlanes.set(k, planes[k], margin(planes[k]));
            if(!(planes[k].distance(Pnt3f()) > boxPlanes.planes[k].margin))
                planesNearOrigin |= 1u << k;
        }
        boxPlanes.set(6, plane);
    }

    /// What rounding may do to distances from a plane. A clip computes each coordinate as
    /// a + (b - a) t with t from 0 to 1. Its error is below 6 units in the last place of the
    /// largest coordinate; six clips and the sum of a distance stay below 64.
    Real32 margin(Plane const &plane) const
    {
        constexpr Real32 Units = 64 * 0x1p-23f;
        constexpr Real32 Smallest = 1e-36f; // above all that is lost where numbers are denormal
        Vec3f const &normal = plane.getNormal();
        Pnt3f const &largest = index.getLargest();
        Real32 const sum = std::abs(normal[0]) * largest[0] + std::abs(normal[1]) * largest[1] +
                           std::abs(normal[2]) * largest[2] +
                           std::abs(plane.getDistanceFromOrigin());
        return sum * Units + Smallest;
    }

    /// Calls `visit(primitive, state)` with each primitive that stands in no box, until it is
    /// false.
    template <class Visit>
    void visitUntamed(Visit visit)
    {
        visit_untamed(index, [&](UInt32 primitive) { return visit(primitive, AllPlanes); });
    }
    /// Calls `visit(primitive, state)` with those of the boxes' blocks, until it is false.
    template <class Boxes, class Visit>
    void walk(Boxes &boxes, Visit visit)
    {
        walkBlocks(boxes,
                   [&](UInt32 block, UInt32 state) {
                       return visit_block(
                           index, block, [&](UInt32 primitive) { return visit(primitive, state); });
                   });
    }
    template <class Boxes, class Visit>
    void walkBlocks(Boxes &boxes, Visit visit)
    {
        walk_boxes(index, AllPlanes, boxes, visit);
    }

    PrimitiveIndex const &index;
    Plane const *planes;
    Plane const &reference;
    FrustumLanes lanes;
    BoxPlanes boxPlanes;
    PartReader<Rule> reader;
    UInt32 planesNearOrigin = 0; ///< those that the origin is not clearly inside of, as bits
};
} // namespace OSG::SelectionSearch::Indexed
