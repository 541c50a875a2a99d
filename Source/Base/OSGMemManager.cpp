#include "OSGMemManager.h"

#include <atomic>
#include <cstdlib>

#include <malloc.h>

#include "OSGPages.h"
#include "OSGSmallBlocks.h"
#include "OSGSoleThread.h"

namespace OSG
{
namespace
{
std::size_t standard_block_size(void *block)
{
#ifdef _WIN32
    return _msize(block);
#else
    return malloc_usable_size(block);
#endif
}

// Everything is constant-initialised, because a static object of any library may ask for a block
// before this source's initialisers run.
void *standard_allocate(std::size_t size)
{
    void *const block = std::malloc(size);
    if(block != nullptr && size >= LargePageBytes)
        prefer_large_pages(block, size);
    return block;
}

constinit MemBackEnd back_end = {&standard_allocate, &std::free, &standard_block_size};

// The sanitizers find blocks that are used after their end only where they allocate each block.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define OSG_SANITIZED_BLOCKS
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) ||                         \
    __has_feature(memory_sanitizer)
#define OSG_SANITIZED_BLOCKS
#endif
#endif
#ifdef OSG_SANITIZED_BLOCKS
constinit bool pools_small_blocks = false;
#else
constinit bool pools_small_blocks = true;
#endif
constinit std::atomic<bool> in_use{false};
constinit std::atomic<UInt64> bytes_out{0};
constinit std::atomic<UInt64> bytes_peak{0};
constinit std::atomic<UInt64> bytes_limit{0};
constexpr UInt64 NoLimit = ~UInt64(0); // of blocks; as a byte limit: only blocks are limited
constinit std::atomic<UInt64> blocks_left{NoLimit};

// This runs for every block, so a process with one thread avoids the locked instructions.
UInt64 add_bytes(UInt64 bytes)
{
    if(!is_sole_thread())
        return bytes_out.fetch_add(bytes, std::memory_order_relaxed) + bytes;
    UInt64 const now = bytes_out.load(std::memory_order_relaxed) + bytes;
    bytes_out.store(now, std::memory_order_relaxed);
    return now;
}

void raise_peak(UInt64 bytes)
{
    UInt64 peak = bytes_peak.load(std::memory_order_relaxed);
    if(bytes > peak && is_sole_thread())
    {
        bytes_peak.store(bytes, std::memory_order_relaxed);
        return;
    }
    while(bytes > peak && !bytes_peak.compare_exchange_weak(peak, bytes, std::memory_order_relaxed))
    {
    }
}

/// Takes one block from those that are left. False where none is left.
bool take_block()
{
    UInt64 left = blocks_left.load(std::memory_order_relaxed);
    while(left != 0 && left != NoLimit && !blocks_left.compare_exchange_weak(left, left - 1))
    {
    }
    return left != 0;
}

/// Whether `size` more bytes stay within the limit. Tested first, so that the back end is not asked
/// in vain.
bool within_limit(UInt64 size, UInt64 limit)
{
    if(limit == 0)
        return true;
    return size <= limit && bytes_out.load(std::memory_order_relaxed) <= limit - size &&
           take_block();
}

struct Block
{
    void *address;
    std::size_t size;
    bool isPooled;
};

// The back end serves where the pool has no memory.
Block allocate(std::size_t size)
{
    if(pools_small_blocks && size <= MostSmallBytes)
    {
        if(void *const address = take_small_block(size))
            return {address, small_block_room(size), true};
    }
    void *const address = back_end.allocate(size);
    return {address, address != nullptr ? back_end.blockSize(address) : 0, false};
}

Block block_at(void *address)
{
    std::size_t const pooled = pools_small_blocks ? small_block_size(address) : 0;
    return {address, pooled != 0 ? pooled : back_end.blockSize(address), pooled != 0};
}

void release(Block const &block)
{
    if(block.isPooled)
        give_small_block(block.address, block.size);
    else
        back_end.release(block.address);
}
} // namespace

void *MemMalloc(std::size_t size) noexcept
{
    if(!in_use.load(std::memory_order_relaxed))
        in_use.store(true);
    UInt64 const limit = bytes_limit.load(std::memory_order_relaxed);
    if(!within_limit(size, limit))
        return nullptr;
    Block const block = allocate(size != 0 ? size : 1);
    if(block.address == nullptr)
        return nullptr;
    UInt64 const now = add_bytes(block.size);
    if(limit != 0 && now > limit)
    {
        add_bytes(UInt64(0) - block.size);
        release(block);
        return nullptr;
    }
    raise_peak(now);
    return block.address;
}

void MemFree(void *address) noexcept
{
    if(address == nullptr)
        return;
    Block const block = block_at(address);
    add_bytes(UInt64(0) - block.size);
    release(block);
}

void *mem_malloc_or_throw(std::size_t size)
{
    void *const block = MemMalloc(size);
    if(block == nullptr)
        throw std::bad_alloc();
    return block;
}

bool set_mem_back_end(MemBackEnd const &backEnd)
{
    if(in_use.load())
        return false;
    back_end = backEnd;
    pools_small_blocks = false;
    return true;
}

UInt64 get_mem_bytes() { return bytes_out.load(std::memory_order_relaxed); }

UInt64 get_mem_peak_bytes() { return bytes_peak.load(std::memory_order_relaxed); }

void reset_mem_peak() { bytes_peak.store(bytes_out.load()); }

void set_mem_limit(UInt64 bytes)
{
    bytes_limit.store(bytes);
    blocks_left.store(NoLimit);
}

void set_mem_block_limit(UInt64 blocks)
{
    blocks_left.store(blocks);
    bytes_limit.store(NoLimit);
}
} // namespace OSG
