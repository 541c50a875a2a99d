#pragma once

/// \file
/// Random numbers that are the same on every machine and library: std distributions are not.

#include <cstdint>

#include "OSGVector.h"

namespace OSG::Test
{
/// SplitMix64 (Steele, Lea, Flood: Fast splittable pseudorandom number generators, 2014).
class RandomNumbers
{
  public:
    explicit RandomNumbers(std::uint64_t seed)
        : _state(seed)
    {
    }

    std::uint64_t next()
    {
        std::uint64_t z = (_state += 0x9e3779b97f4a7c15u);
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        return z ^ (z >> 31);
    }
    /// From 0 to `count` - 1.
    UInt32 below(UInt32 count) { return static_cast<UInt32>((next() >> 32) * count >> 32); }
    /// From `low` up to `high`.
    Real32 real(Real32 low, Real32 high)
    {
        return low + (high - low) * static_cast<Real32>(next() >> 40) * 0x1p-24f;
    }
    Pnt3f point(Real32 low, Real32 high)
    {
        Real32 const x = real(low, high);
        Real32 const y = real(low, high);
        return Pnt3f(x, y, real(low, high));
    }
    /// Each coordinate from -1 to 1.
    Vec3f vector() { return point(-1.f, 1.f).subZero(); }

  private:
    std::uint64_t _state;
};
} // namespace OSG::Test
