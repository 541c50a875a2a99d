#include "OSGGeoArrayPool.h"

#include <utility>

namespace OSG
{
namespace
{
// FNV-1a (Fowler, Noll and Vo), applied to whole values instead of bytes. The upper bits are folded
// into the lower ones, which choose the place.
template <class Values>
UInt64 hash_of(Values const &values)
{
    UInt64 hash = 0xCBF29CE484222325u; // offset basis and prime of the 64-bit FNV
    for(auto const value : values)
        hash = (hash ^ value) * 0x100000001B3u;
    return hash ^ (hash >> 32);
}
} // namespace

template <class Property>
GeoArrayPool<Property>::GeoArrayPool() = default;

template <class Property>
GeoArrayPool<Property>::~GeoArrayPool() = default;

template <class Property>
typename GeoArrayPool<Property>::Pointer GeoArrayPool<Property>::get(Values &&values)
{
    Pointer *place = nullptr;
    if(values.size() <= LongestKept)
    {
        if(_places.empty())
            _places.resize(Places);
        place = &_places[hash_of(values) & (Places - 1)];
        if(*place != nullptr && (*place)->getValues() == values)
            return *place;
    }
    Pointer made(Property::create());
    made->editValues() = std::move(values);
    if(place != nullptr)
        *place = made;
    return made;
}

template class GeoArrayPool<GeoUInt8Property>;
template class GeoArrayPool<GeoUInt32Property>;
} // namespace OSG
