#pragma once

/// \file
/// The allocator that all scene objects, properties and internal containers live in.

#include <cstddef>
#include <new>

#include "OSGBaseApi.h"
#include "OSGBaseTypes.h"

namespace OSG
{
/// A block of at least `size` bytes, aligned for any object, or null where there is no memory.
OSG_BASE_API void *MemMalloc(std::size_t size) noexcept;
/// Gives a block of MemMalloc back; null is allowed.
OSG_BASE_API void MemFree(void *block) noexcept;
/// MemMalloc that raises std::bad_alloc in place of null.
OSG_BASE_API void *mem_malloc_or_throw(std::size_t size);

/// What stands behind MemMalloc and MemFree. `blockSize` tells the bytes that a block takes.
struct MemBackEnd
{
    void *(*allocate)(std::size_t size);
    void (*release)(void *block);
    std::size_t (*blockSize)(void *block);
};
/// Replaces the back end. Only before the first block was handed out: otherwise false, and nothing
/// changes.
OSG_BASE_API bool set_mem_back_end(MemBackEnd const &backEnd);

/// Bytes that are out, and the most that ever were, as the back end sizes the blocks.
OSG_BASE_API UInt64 get_mem_bytes();
OSG_BASE_API UInt64 get_mem_peak_bytes();
/// Starts a new peak at the bytes that are out now.
OSG_BASE_API void reset_mem_peak();
/// MemMalloc gives null once more than `bytes` would be out; 0 lifts the limit.
OSG_BASE_API void set_mem_limit(UInt64 bytes);
/// MemMalloc hands out `blocks` more blocks, then null until set_mem_limit is called.
OSG_BASE_API void set_mem_block_limit(UInt64 blocks);

/// Standard allocator over MemMalloc; raises std::bad_alloc.
template <class T>
struct MemAllocator
{
    using value_type = T;

    MemAllocator() = default;
    template <class U>
    MemAllocator(MemAllocator<U> const &) noexcept
    {
    }

    T *allocate(std::size_t n)
    {
        if(n > static_cast<std::size_t>(-1) / sizeof(T))
            throw std::bad_array_new_length();
        return static_cast<T *>(mem_malloc_or_throw(n * sizeof(T)));
    }
    void deallocate(T *block, std::size_t) noexcept { MemFree(block); }

    friend bool operator==(MemAllocator const &, MemAllocator const &) { return true; }
};

/// Gives a class operator new and delete over MemMalloc.
struct MemObject
{
    static void *operator new(std::size_t size) { return mem_malloc_or_throw(size); }
    static void *operator new(std::size_t, void *place) noexcept { return place; }
    static void operator delete(void *block) noexcept { MemFree(block); }
    static void operator delete(void *, void *) noexcept {}
};
} // namespace OSG
