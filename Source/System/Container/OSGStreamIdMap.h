#pragma once

/// \file
/// Which container stands for an id of a stream that is being read.

#include <unordered_map>
#include <vector>

#include "OSGFieldContainer.h"

namespace OSG
{
/// While it lives, FieldContainerFactoryBase::getMappedContainer of the calling thread answers from
/// this map, and with null for ids that were not added: pointer fields read by `copyFromBin` point
/// to the containers of the stream. Maps nest; the innermost one answers. One that is destroyed
/// belongs to the thread that made it and is its innermost.
///
///   StreamIdMap ids;
///   for each record: ids.add(idInStream, container);       // all before the first pointer is read
///   for each record: container->copyFromBin(handler, mask);
class OSG_SYSTEM_API StreamIdMap
{
  public:
    StreamIdMap();
    ~StreamIdMap();
    StreamIdMap(StreamIdMap const &) = delete;
    StreamIdMap &operator=(StreamIdMap const &) = delete;

    /// `container` is referenced for as long as the map lives. An id that was added before stands
    /// for the new container; 0 always stands for null.
    void add(UInt32 streamId, FieldContainer *container);
    /// Null for an id that was not added.
    FieldContainer *find(UInt32 streamId) const;

    /// The calling thread's innermost map; null where there is none.
    static StreamIdMap const *current();

  private:
    using Held = UnrecordedRefPtr<FieldContainer>;

    /// Ids that come one after the other, from 1 on: id `i` at `i - 1`.
    std::vector<Held, MemAllocator<Held>> _inOrder;
    std::unordered_map<UInt32, Held, std::hash<UInt32>, std::equal_to<UInt32>,
                       MemAllocator<std::pair<UInt32 const, Held>>>
        _others;
    StreamIdMap *_outer;
};
} // namespace OSG
