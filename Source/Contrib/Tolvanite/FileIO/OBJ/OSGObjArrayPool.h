#pragma once

/// \file
/// Arrays that the geometries of one read may share.

#include <vector>

#include "OSGContribTolvaniteApi.h"
#include "OSGIndexMaker.h"

namespace OSG
{
/// Gives equal arrays as one property. Files of very many small material runs repeat a few arrays
/// over and over: one polygon of three corners, the index 0 1 2.
///
/// A pool has a fixed number of places. A new array takes the place of the one that stood there, so
/// that arrays that never repeat cost no memory; long ones are not kept at all.
template <class Property>
class OSG_CONTRIBTOLVANITE_API ObjArrayPool
{
  public:
    using Pointer = UnrecordedRefPtr<Property>;
    using Values = std::remove_cvref_t<decltype(std::declval<Property>().getValues())>;

    static constexpr std::size_t LongestKept = 1024;

    ObjArrayPool();
    ~ObjArrayPool();

    /// A property of these values, which are taken.
    Pointer get(Values &&values);

  private:
    static constexpr std::size_t Places = 128; // a power of two; files repeat very few arrays

    std::vector<Pointer, MemAllocator<Pointer>> _places; // by hash value; empty until needed
};

extern template class ObjArrayPool<GeoUInt8Property>;
extern template class ObjArrayPool<GeoUInt32Property>;
} // namespace OSG
