#include "OSGOSBNumbers.h"

namespace OSG
{
namespace
{
constexpr std::size_t FirstPlaces = 64;

// Containers that are made one after the other usually have neighbouring addresses, and are met in
// the same order. Within a stretch of memory the hash follows the address, so that neighbours share
// cache lines of the table. Stretches are spread by Fibonacci hashing (Knuth, The Art of Computer
// Programming 3, 6.4).
std::size_t hash_of(FieldContainer const *container)
{
    constexpr UInt64 GoldenRatio = 0x9E3779B97F4A7C15;
    constexpr int Alignment = 4; // bits of an address that are always 0
    constexpr int Stretch = 16;  // bits of an address within one stretch
    UInt64 const address = reinterpret_cast<std::uintptr_t>(container);
    UInt64 const within = (address & ((UInt64(1) << Stretch) - 1)) >> Alignment;
    return static_cast<std::size_t>((((address >> Stretch) * GoldenRatio) >> 32) + within);
}
} // namespace

std::size_t OSBNumbers::placeOf(FieldContainer const *container) const
{
    std::size_t const last = _places.size() - 1;
    std::size_t place = hash_of(container) & last;
    while(_places[place].container != nullptr && _places[place].container != container)
        place = (place + 1) & last;
    return place;
}

bool OSBNumbers::add(FieldContainer *container, UInt32 &number)
{
    // The table is at most half full, so that probe sequences stay short.
    if(2 * (_containers.size() + 1) > _places.size())
        grow();
    Place &place = _places[placeOf(container)];
    bool const isNew = place.container == nullptr;
    if(isNew)
    {
        _containers.push_back(container);
        place = {container, static_cast<UInt32>(_containers.size())};
    }
    number = place.number;
    return isNew;
}

UInt32 OSBNumbers::find(FieldContainer const *container) const
{
    return _places.empty() ? 0 : _places[placeOf(container)].number;
}

void OSBNumbers::grow()
{
    std::vector<Place, MemAllocator<Place>> wider(
        _places.empty() ? FirstPlaces : 2 * _places.size(), Place{nullptr, 0});
    _places.swap(wider);
    for(std::size_t i = 0; i < _containers.size(); ++i)
        _places[placeOf(_containers[i])] = {_containers[i], static_cast<UInt32>(i + 1)};
}
} // namespace OSG
