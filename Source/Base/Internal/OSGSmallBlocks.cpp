#include "OSGSmallBlocks.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include <pthread.h>

namespace OSG
{
namespace
{
// Written by nobody: its lists have no blocks to take and no room for more.
constinit SmallBlockCache no_cache{};

/// A list of a thread holds two batches at most.
constexpr std::size_t BatchBytes = 4096;
UInt32 batch_of(UInt32 sizeClass)
{
    return static_cast<UInt32>(BatchBytes / (sizeClass * SmallBlockStep));
}

void end_cache(void *memory)
{
    auto *const cache = static_cast<SmallBlockCache *>(memory);
    small_block_cache = &no_cache;
    for(SmallBlockCache::List &list : cache->lists)
        give_small_blocks(list.first);
    std::free(cache);
}

pthread_once_t hooks_once = PTHREAD_ONCE_INIT;
constinit bool has_key = false;
pthread_key_t cache_key;

void set_hooks()
{
    pthread_atfork(&lock_small_chunks, &unlock_small_chunks, &unlock_small_chunks);
    has_key = pthread_key_create(&cache_key, &end_cache) == 0;
}

/// Makes the cache of this thread where the thread has none. False where it cannot have one.
bool has_cache()
{
    if(small_block_cache != &no_cache)
        return true;
    pthread_once(&hooks_once, &set_hooks);
    if(!has_key)
        return false;
    auto *const cache = static_cast<SmallBlockCache *>(std::calloc(1, sizeof(SmallBlockCache)));
    if(cache == nullptr || pthread_setspecific(cache_key, cache) != 0)
    {
        std::free(cache);
        return false;
    }
    for(UInt32 i = 1; i < SmallClasses; ++i)
        cache->lists[i].room = 2 * batch_of(i);
    small_block_cache = cache;
    return true;
}
} // namespace

constinit OSG_STATIC_TLS thread_local SmallBlockCache *small_block_cache = &no_cache;

void *refill_and_take(UInt32 sizeClass) noexcept
{
    bool const isKept = has_cache();
    UInt32 const wanted = isKept ? batch_of(sizeClass) : 1;
    FreeSmallBlock *const block = take_small_blocks(sizeClass, wanted);
    if(block == nullptr || !isKept)
        return block;
    SmallBlockCache::List &list = small_block_cache->lists[sizeClass];
    list.first = block->next;
    for(FreeSmallBlock *more = list.first; more != nullptr; more = more->next)
        --list.room;
    return block;
}

// The batch that was freed last stays.
void drain_and_give(void *block, UInt32 sizeClass) noexcept
{
    auto *const given = ::new(block) FreeSmallBlock{nullptr};
    if(!has_cache())
    {
        give_small_blocks(given);
        return;
    }
    SmallBlockCache::List &list = small_block_cache->lists[sizeClass];
    given->next = list.first;
    if(list.room == 0)
    {
        FreeSmallBlock *last = given;
        for(UInt32 i = 1; i < batch_of(sizeClass); ++i)
            last = last->next;
        give_small_blocks(last->next);
        last->next = nullptr;
        list.room += batch_of(sizeClass) + 1;
    }
    list.first = given;
    --list.room;
}
} // namespace OSG
