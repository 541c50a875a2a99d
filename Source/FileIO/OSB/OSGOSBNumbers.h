#pragma once

#include <vector>

#include "OSGBaseTypes.h"
#include "OSGMemManager.h"

namespace OSG
{
class FieldContainer;

/// Numbers containers from 1 in the order in which they are added. This is a hash table with open
/// addressing, because scenes have millions of containers and a heap block for each would cost more
/// than all other bookkeeping.
class OSBNumbers
{
  public:
    using ContainerList = std::vector<FieldContainer *, MemAllocator<FieldContainer *>>;

    /// Gives the container's number; a new container gets the next one. True where it is new.
    bool add(FieldContainer *container, UInt32 &number);
    /// The number of a container; 0 where it was not added.
    UInt32 find(FieldContainer const *container) const;
    /// The containers in the order of their numbers.
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
