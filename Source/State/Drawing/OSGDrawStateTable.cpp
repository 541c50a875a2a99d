#include "OSGDrawStateTable.h"

#include <bit>

#include "OSGDrawStateResolution.h"
#include "OSGMaterial.h"

namespace OSG
{
namespace
{
/// Multiplicative hashing (Knuth).
class Hash
{
  public:
    void add(UInt64 number) { _sum = (_sum + number) * 0x9E3779B97F4A7C15u; }
    // Zeros of either sign are equal.
    void add(Real32 number) { add(UInt64(std::bit_cast<UInt32>(number == 0 ? 0.f : number))); }
    void add(void const *address) { add(UInt64(reinterpret_cast<std::uintptr_t>(address))); }
    void add(Color4f const &color)
    {
        for(int i = 0; i < 4; ++i)
            add(color[static_cast<UInt32>(i)]);
    }
    std::size_t value() const { return static_cast<std::size_t>(_sum >> 16); }

  private:
    UInt64 _sum = 0;
};
} // namespace

std::size_t DrawStateTable::KeyHash::operator()(Key const &key) const
{
    Hash hash;
    hash.add(key.material);
    hash.add(key.overriding);
    return hash.value();
}

// The parts in which materials mostly differ are enough.
std::size_t DrawStateTable::ValueHash::operator()(DrawState const *state) const
{
    Hash hash;
    SurfaceValues const &surface = state->surface;
    for(Color4f const &color :
        {surface.ambient, surface.diffuse, surface.specular, surface.emission})
        hash.add(color);
    hash.add(surface.shininess);
    for(TextureValues const &texture : state->textures)
        hash.add(texture.image);
    for(ActiveChunk const &active : state->chunks)
        hash.add(active.chunk);
    return hash.value();
}

UInt32 DrawStateTable::intern(DrawState const &state)
{
    auto const known = _byValue.find(&state);
    if(known != _byValue.end())
        return known->second;
    _values.push_back(state);
    _states.push_back(&_values.back());
    UInt32 const number = static_cast<UInt32>(_states.size() - 1);
    _byValue.emplace(&_values.back(), number);
    return number;
}

DrawStateTable::Entry DrawStateTable::read(Key const &key)
{
    return {key, intern(resolve_draw_state(key.material, key.overriding)),
            key.material != nullptr ? key.material->getSortKey() : 0};
}

UInt32 DrawStateTable::numberOf(Material const *material, Material const *overriding)
{
    Key const key{material, overriding};
    auto const known = _numbers.find(key);
    if(known != _numbers.end())
        return known->second;
    Entry const entry = read(key);
    if(_free.empty())
    {
        _free.push_back(size());
        _entries.emplace_back();
    }
    UInt32 const number = _free.back();
    _entries[number] = entry;
    _numbers.emplace(key, number);
    _free.pop_back();
    return number;
}

void DrawStateTable::refresh(std::vector<bool> const &inUse)
{
    _byValue.clear();
    _states.clear();
    _values.clear();
    _numbers.clear();
    _free.clear();
    for(UInt32 number = 0; number < size(); ++number)
    {
        if(!inUse[number])
        {
            _free.push_back(number);
            continue;
        }
        _entries[number] = read(_entries[number].key);
        _numbers.emplace(_entries[number].key, number);
    }
}

void DrawStateTable::clear() { *this = DrawStateTable(); }
} // namespace OSG
