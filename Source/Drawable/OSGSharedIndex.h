#pragma once

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
} // namespace OSG
