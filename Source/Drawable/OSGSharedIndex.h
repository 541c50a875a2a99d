#pragma once

#include <vector>

#include "OSGIndexMaker.h"

namespace OSG
{
class Geometry;

/// Folds several index arrays into one.
///
/// A geometry whose indexed arrays have one and the same index, or none, stays as it is and keeps
/// its arrays; the result is 0. Otherwise it gets arrays and one index of its own: each distinct
/// combination of elements once, in the order of first use; the result is their number. A vertex
/// whose position is out of range gets the index 4294967295; another array's element that is out
/// of range becomes a zero element.
OSG_DRAWABLE_API Int32 createSharedIndex(Geometry *geometry);
/// The same with the index that `makeIndex` gives.
OSG_DRAWABLE_API Int32 createSharedIndex(Geometry *geometry, IndexMaker const &makeIndex);

/// The elements of the array in a slot that the vertices of a geometry take: one for each vertex.
struct VertexElements
{
    UInt16 slot;
    std::vector<UInt32, MemAllocator<UInt32>> elements;
};

/// The same for a geometry that has several arrays and no index yet: saves a reader the properties
/// that would be replaced at once. `ofSlots` has all arrays of the geometry, the positions first,
/// and is used up.
OSG_DRAWABLE_API Int32 createSharedIndex(Geometry &geometry, std::vector<VertexElements> ofSlots,
                                         IndexMaker const &makeIndex);
} // namespace OSG
