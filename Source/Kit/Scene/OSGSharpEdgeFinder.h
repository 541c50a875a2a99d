#pragma once

#include <vector>

#include "OSGTolvaniteKitApi.h"
#include "OSGVector.h"

namespace OSG
{
/// Numbers of what stands in a list elsewhere, by hashes that the caller computes: an
/// open-addressed table.
class NumberSlots
{
  public:
    static constexpr UInt32 None = 0xFFFFFFFF;

    /// The slot of that hash whose number `isIt` accepts, or a free one, which holds None.
    template <class IsIt>
    UInt32 &slot(UInt64 hash, IsIt isIt)
    {
        // Multiplicative hashing (Knuth), linear probing.
        std::size_t const mask = _slots.size() - 1;
        std::size_t i = static_cast<std::size_t>(hash * 0x9E3779B97F4A7C15u >> 24) & mask;
        while(_slots[i] != None && !isIt(_slots[i]))
            i = (i + 1) & mask;
        return _slots[i];
    }
    /// To be called before a number is added to `count` of them.
    template <class HashOf>
    void makeRoom(std::size_t count, HashOf hashOf)
    {
        if(4 * (count + 1) <= 3 * _slots.size())
            return;
        _slots.assign(2 * _slots.size(), None);
        for(UInt32 number = 0; number < count; ++number)
            slot(hashOf(number), [](UInt32) { return false; }) = number;
    }

  private:
    std::vector<UInt32> _slots = std::vector<UInt32>(64, None); // a power of two of them
};

/// Finds the edges at which triangles do not go on smoothly: where two of them meet at more than an
/// angle, where three or more do so, and where a triangle has no neighbour. The order of the
/// corners of a triangle does not count. Corners of the same coordinates are one, whether they are
/// one vertex or not. A triangle without area, or with a corner that is not finite, is none.
class OSG_TOLVANITEKIT_API SharpEdgeFinder
{
  public:
    struct Edge
    {
        Pnt3f a, b;
    };

    /// `degrees` is the largest angle between the planes of two triangles that go on smoothly.
    explicit SharpEdgeFinder(Real64 degrees);

    void add(Pnt3f const &a, Pnt3f const &b, Pnt3f const &c);
    /// Of all triangles, the smooth ones too.
    std::size_t countEdges() const { return _sides.size(); }
    /// In the order in which they came.
    std::vector<Edge> find() const;

  private:
    /// An edge and what is known of the triangles at it.
    struct Side
    {
        UInt32 ends[2];       // numbers of points, the smaller one first
        Vec3f inward;         // from the edge into its first triangle, of length 1
        bool isSharp = false; // a triangle lies in another plane than the first
        bool goesOn = false;  // a triangle lies on the other side
    };

    UInt32 numberOf(Pnt3f const &point);
    void addSide(UInt32 a, UInt32 b, Vec3d const &inward);

    Real64 _smoothest; // cosine of the angle
    std::vector<Pnt3f> _points;
    std::vector<Side> _sides;
    NumberSlots _pointSlots;
    NumberSlots _sideSlots;
};
} // namespace OSG
