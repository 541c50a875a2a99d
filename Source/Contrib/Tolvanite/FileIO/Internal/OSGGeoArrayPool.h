#pragma once

/// \file
/// Shares equal arrays between the geometries of one read.

#include <vector>

#include "OSGContribTolvaniteApi.h"
#include "OSGIndexMaker.h"

namespace OSG
{
/// Returns the same property for equal arrays. Files with very many small material runs repeat a
/// few arrays, such as the type and length of one triangle and the index 0 1 2.
///
/// A pool has a fixed number of places, chosen by a hash. A new array replaces the one at its
/// place, so arrays that never repeat use no memory. Long arrays are not kept.
template <class Property>
class OSG_CONTRIBTOLVANITE_API GeoArrayPool
{
  public:
    using Pointer = UnrecordedRefPtr<Property>;
    using Values = std::remove_cvref_t<decltype(std::declval<Property>().getValues())>;

    static constexpr std::size_t LongestKept = 1024;

    GeoArrayPool();
    ~GeoArrayPool();

    /// A property with these values. `values` is moved from.
    Pointer get(Values &&values);

  private:
    static constexpr std::size_t Places = 128; // a power of two; files repeat very few arrays

    std::vector<Pointer, MemAllocator<Pointer>> _places; // by hash; empty until first used
};

extern template class GeoArrayPool<GeoUInt8Property>;
extern template class GeoArrayPool<GeoUInt32Property>;
} // namespace OSG
