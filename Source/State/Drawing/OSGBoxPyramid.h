#pragma once

/// \file
/// Boxes in a list, and boxes around runs of them, so that a view finds the ones that it may show.

#include <vector>

#include "OSGStateApi.h"
#include "OSGViewPlanes.h"

namespace OSG
{
/// Boxes by number. Neighbours in the list are expected to be neighbours in space, as the order of
/// a scene's tree makes them: each eight share a box on the level above, each eight of those again.
///
///     level 0   [0 .. 7] [8 .. 15] ...    the boxes, eight to a block
///     level 1   [ one for each block of level 0 ]
///     ...       up to a single block
class OSG_STATE_API BoxPyramid
{
  public:
    /// The boxes that are new hold nothing, and are never seen.
    void resize(UInt32 count);
    UInt32 size() const { return _size; }
    /// Takes effect with update(). An infinite box is always seen, an empty one never. A box that
    /// is not valid counts as infinite.
    void set(UInt32 number, BoxVolume const &box);
    /// Brings the levels above the boxes from `first` on, before `end`, up to date.
    void update(UInt32 first, UInt32 end);
    /// At least the largest absolute finite coordinate of all boxes ever set.
    Real32 getReach() const { return _reach; }

    /// Sets bit i % 64 of bits[i / 64] for each box i that may be seen and clears the others.
    void findSeen(ViewPlanes const &planes, std::vector<UInt64> &bits) const;

  private:
    using Blocks = std::vector<BoxLanes, MemAllocator<BoxLanes>>;

    void findSeen(ViewPlanes const &planes, std::size_t level, UInt32 block, bool isInside,
                  std::vector<UInt64> &bits) const;

    UInt32 _size = 0;
    Real32 _reach = 0;
    std::vector<Blocks> _levels;
};
} // namespace OSG
