#pragma once

/// \file
/// Eight boxes side by side, and their test against planes.

#include "OSGDrawableApi.h"
#include "OSGPlane.h"

namespace OSG
{
/// Eight neighbouring boxes of a PrimitiveIndex, each around some primitives, and the first and
/// last running number of these. The boxes are exact: no corner lies outside, and all numbers are
/// finite. Places of a node beyond the last box hold zeros.
struct BoxNode
{
    static constexpr UInt32 Width = 8;

    Real32 bound[6][Width]; ///< min x, y, z, then max x, y, z
    UInt32 first[Width];
    UInt32 last[Width];
};

/// Up to seven planes, made ready for tests of many boxes. Keeps no pointer.
struct BoxPlanes
{
    static constexpr UInt32 Capacity = 7;

    struct Entry
    {
        Real32 normal[3];
        Real32 distance;
        Real32 margin; ///< what is not farther inside counts as crossing; not below 0
        /// Rows of BoxNode::bound that give the smallest distance from the plane; the others give
        /// the largest.
        UInt8 low[3];
        UInt8 high[3];
    };
    Entry planes[Capacity];

    void set(UInt32 k, Plane const &plane, Real32 margin = 0.f)
    {
        planes[k].distance = plane.getDistanceFromOrigin();
        planes[k].margin = margin;
        for(UInt8 axis = 0; axis < 3; ++axis)
        {
            Real32 const n = plane.getNormal()[axis];
            planes[k].normal[axis] = n;
            planes[k].low[axis] = static_cast<UInt8>(n >= 0.f ? axis : axis + 3);
            planes[k].high[axis] = static_cast<UInt8>(n >= 0.f ? axis + 3 : axis);
        }
    }
};

/// How eight boxes lie to some planes. Bit i and place i stand for box i.
struct BoxGrades
{
    UInt32 outside; ///< wholly outside one of the planes
    /// The planes, as bits, that the box is not inside of by their margins; none that were not
    /// asked for.
    UInt32 crossed[BoxNode::Width];
    Real32 nearest[BoxNode::Width];  ///< smallest distance of a corner from plane 6
    Real32 farthest[BoxNode::Width]; ///< largest distance
};

/// Grades the boxes of `node` against those of the planes 0 to 5 whose bits are set in `mask`, and
/// measures their distances from plane 6.
///
/// Distances are computed at the corners of the boxes in the order of operations of
/// Plane::distance. Rounding keeps the order of numbers, so the result holds without a tolerance
/// for whatever Plane::distance computes for points in the boxes. The planes are finite. The result
/// has the same bits with every instruction set.
OSG_DRAWABLE_API void grade_boxes(BoxNode const &node, BoxPlanes const &planes, UInt32 mask,
                                  BoxGrades &grades);
/// The same without vector instructions, to compare with.
OSG_DRAWABLE_API void grade_boxes_slowly(BoxNode const &node, BoxPlanes const &planes, UInt32 mask,
                                         BoxGrades &grades);
} // namespace OSG
