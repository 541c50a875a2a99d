#pragma once

#include <vector>

#include "OSGBaseTypes.h"
#include "OSGMemManager.h"

namespace OSG
{
class FieldContainer;

/// Numbers of containers, from 1 on in the order in which they are met. A table with open places:
/// scenes have millions of containers, and a node on the heap for each would cost more than the
/// rest of the bookkeeping.
class OSBNumbers
{
  public:
    using ContainerList = std::vector<FieldContainer *, MemAllocator<FieldContainer *>>;

    /// The container's number, the next one where it is new. True where it is.
    bool add(FieldContainer *container, UInt32 &number);
    /// 0 for one that was not added.
    UInt32 find(FieldContainer const *container) const;
    /// In the order of their numbers.
    ContainerList const &getContainers() const { return _containers; }

  private:
    struct Place
    {
        FieldContainer const *container; ///< null where it is free
        UInt32 number;
    };

    std::size_t placeOf(FieldContainer const *container) const;
    void grow();

    ContainerList _containers;
    std::vector<Place, MemAllocator<Place>> _places; // a power of two
};
} // namespace OSG
