#pragma once

/// \file
/// A ray, made ready for tests of many boxes.

#include "OSGBoxNode.h"
#include "OSGLine.h"

namespace OSG
{
/// Keeps no pointer.
struct BoxRay
{
    Real32 position[3];
    Real32 inverse[3];  ///< of the direction
    Real32 widening[3]; ///< `room` along the axis, as a distance along the ray
    Real32 room;        ///< what each box grows by on each side
    UInt8 entry[3];     ///< rows of BoxNode::bound that the ray comes to first
    UInt8 exit[3];
    bool isAcross[3]; ///< the ray does not move along this axis

    /// The ray has a direction of about length 1, and all numbers are below 1e18. So has whatever
    /// box it is tested with.
    OSG_DRAWABLE_API void set(Line const &ray, Real32 growth);
};

/// How a ray passes eight boxes. Bit i and place i stand for box i.
struct BoxRayTimes
{
    UInt32 missed;
    Real32 enter[BoxNode::Width]; ///< distance from which on the ray is inside, at least 0
};

/// Computes these for the boxes of `node`, each grown by `room`. A box that the ray enters beyond
/// `limit` counts as missed. Rounding is not more than 1e-6 of the largest distance along an axis
/// from the ray's position to a box. The result has the same bits with every instruction set.
OSG_DRAWABLE_API void cast_at_boxes(BoxNode const &node, BoxRay const &ray, Real32 limit,
                                    BoxRayTimes &times);
/// The same without vector instructions, to compare with.
OSG_DRAWABLE_API void cast_at_boxes_slowly(BoxNode const &node, BoxRay const &ray, Real32 limit,
                                           BoxRayTimes &times);
} // namespace OSG
