#pragma once

/// \file
/// An order of boxes in which neighbours in the order are neighbours in space.

#include "OSGDrawableApi.h"
#include "OSGMemArray.h"
#include "OSGVector.h"

namespace OSG
{
/// Sorts numbered points along the Morton curve (Morton: A computer oriented geodetic data base and
/// a new technique in file sequencing, 1966), on a grid of 1024 steps along the longest side of
/// their box. Points of equal key stay in the order in which they were added.
class OSG_DRAWABLE_API SpaceOrder
{
  public:
    /// Room for `capacity` points in the box from `low` to `high`. All numbers are finite.
    SpaceOrder(UInt32 capacity, Pnt3f const &low, Pnt3f const &high);

    void add(UInt32 number, Pnt3f const &point) { _entries[_size++] = {key(point), number}; }
    /// The numbers in order, in an array with room for at least `size`. Releases all other memory.
    MemArray<UInt32> finish(UInt32 size = 0);

  private:
    struct Entry
    {
        UInt32 key;
        UInt32 number;
    };

    UInt32 key(Pnt3f const &point) const
    {
        return spread(step(point, 0)) | spread(step(point, 1)) << 1 | spread(step(point, 2)) << 2;
    }
    UInt32 step(Pnt3f const &point, UInt32 axis) const
    {
        constexpr Real32 LastStep = 1023.f;
        Real32 const steps = (point[axis] - _low[axis]) * _stepsPerUnit;
        // A point outside the box, or a box without extent: the order is merely worse.
        return static_cast<UInt32>(steps > 0.f ? (steps < LastStep ? steps : LastStep) : 0.f);
    }
    /// Bit i of ten goes to bit 3 i.
    static UInt32 spread(UInt32 v)
    {
        v = (v | v << 16) & 0x030000FFu;
        v = (v | v << 8) & 0x0300F00Fu;
        v = (v | v << 4) & 0x030C30C3u;
        return (v | v << 2) & 0x09249249u;
    }

    MemArray<Entry> _entries;
    UInt32 _size = 0;
    Pnt3f _low;
    Real32 _stepsPerUnit;
};
} // namespace OSG
