#pragma once

/// \file
/// A pool for small blocks, which make up nearly all of a scene. Each thread has lists of free
/// blocks, one for each size, and exchanges whole batches of them with the chunks that all threads
/// share.

#include <cstddef>

#include "OSGSmallChunks.h"
#include "OSGStaticTls.h"

namespace OSG
{
/// The lists of free blocks of one thread.
struct SmallBlockCache
{
    struct List
    {
        FreeSmallBlock *first;
        UInt32 room; // for this many blocks more
    };
    List lists[SmallClasses];
};
/// Every thread begins and ends with a cache without blocks and without room, which all threads
/// share.
extern constinit OSG_STATIC_TLS thread_local SmallBlockCache *small_block_cache;

void *refill_and_take(UInt32 sizeClass) noexcept;
void drain_and_give(void *block, UInt32 sizeClass) noexcept;

/// The bytes of a block that is taken for `size`.
inline std::size_t small_block_room(std::size_t size)
{
    return (size + SmallBlockStep - 1) / SmallBlockStep * SmallBlockStep;
}

/// A block of at least `size` bytes, which are not more than MostSmallBytes. Null where there is no
/// memory.
inline void *take_small_block(std::size_t size) noexcept
{
    auto const sizeClass = static_cast<UInt32>((size + SmallBlockStep - 1) / SmallBlockStep);
    SmallBlockCache::List &list = small_block_cache->lists[sizeClass];
    FreeSmallBlock *const block = list.first;
    if(block == nullptr)
        return refill_and_take(sizeClass);
    list.first = block->next;
    ++list.room;
    return block;
}

/// The bytes of a block of the pool, 0 for any other block.
inline std::size_t small_block_size(void const *block) noexcept
{
    return small_chunk_map.classOf(block) * SmallBlockStep;
}

/// Frees a block of the pool, which any thread may have taken.
inline void give_small_block(void *block, std::size_t size) noexcept
{
    auto const sizeClass = static_cast<UInt32>(size / SmallBlockStep);
    SmallBlockCache::List &list = small_block_cache->lists[sizeClass];
    if(list.room == 0)
    {
        drain_and_give(block, sizeClass);
        return;
    }
    --list.room;
    list.first = ::new(block) FreeSmallBlock{list.first};
}
} // namespace OSG
