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

/// An array for a slot, and the elements of it that the vertices of a geometry take: one for each
/// vertex.
struct VertexElements
{
    UInt16 slot;
    UnrecordedRefPtr<GeoVectorProperty> array;
    std::vector<UInt32, MemAllocator<UInt32>> elements;
};

/// The same for several arrays that the geometry does not have yet: saves a reader the properties
/// that would be replaced at once. The positions come first. Arrays that nobody else holds are
/// freed one after the other.
OSG_DRAWABLE_API Int32 createSharedIndex(Geometry &geometry, std::vector<VertexElements> arrays,
                                         IndexMaker const &makeIndex);
} // namespace OSG
