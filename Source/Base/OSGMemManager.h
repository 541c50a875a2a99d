#pragma once

/// \file
/// The allocator of all scene objects, properties and internal containers.
///
/// Blocks of at most 256 bytes come from a pool, other blocks from the back end. Each thread keeps
/// up to 8 KiB of free blocks of a size; they become free for other threads when the thread ends.
/// The child of a fork does not get those of the other threads. The pool takes memory from the
/// system in pieces of 2 MiB. Of the pieces without blocks it keeps 64 MiB for the next scene, and
/// gives the memory of the others back. A piece in which one block is left stays as a whole.
///
/// For blocks of 2 MiB and more the system is asked for large pages. It may refuse.
///
/// The pool is off under the address and thread sanitizers, and where the back end was replaced. A
/// host that looks for faults with another tool therefore sets malloc, free and malloc_usable_size
/// as its back end.

#include <cstddef>
#include <new>

#include "OSGBaseApi.h"
#include "OSGBaseTypes.h"

namespace OSG
{
/// A block of at least `size` bytes, aligned for any object, or null where there is no memory.
OSG_BASE_API void *MemMalloc(std::size_t size) noexcept;
/// Frees a block of MemMalloc. Null is allowed.
OSG_BASE_API void MemFree(void *block) noexcept;
/// Like MemMalloc, but raises std::bad_alloc instead of returning null.
OSG_BASE_API void *mem_malloc_or_throw(std::size_t size);

/// Where MemMalloc takes its blocks from. `blockSize` gives the size of a block in bytes.
struct MemBackEnd
{
    void *(*allocate)(std::size_t size);
    void (*release)(void *block);
    std::size_t (*blockSize)(void *block);
};
/// Replaces the back end. Possible only before the first block is allocated: afterwards the result
/// is false and nothing changes. A back end that was set serves all blocks, small ones too.
OSG_BASE_API bool set_mem_back_end(MemBackEnd const &backEnd);

/// The bytes that are allocated now, and the largest number so far. A block of the pool counts with
/// its size rounded up to a multiple of 16, another one with the back end's size of it.
OSG_BASE_API UInt64 get_mem_bytes();
OSG_BASE_API UInt64 get_mem_peak_bytes();
/// Sets the peak to the bytes that are allocated now.
OSG_BASE_API void reset_mem_peak();
/// From now on MemMalloc returns null where more than `bytes` would be allocated. 0 removes the
/// limit.
OSG_BASE_API void set_mem_limit(UInt64 bytes);
/// MemMalloc allocates `blocks` more blocks and then returns null until set_mem_limit is called.
OSG_BASE_API void set_mem_block_limit(UInt64 blocks);

/// A standard allocator that uses MemMalloc. Raises std::bad_alloc.
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

/// Base of classes whose objects MemMalloc allocates.
struct MemObject
{
    static void *operator new(std::size_t size) { return mem_malloc_or_throw(size); }
    static void *operator new(std::size_t, void *place) noexcept { return place; }
    static void operator delete(void *block) noexcept { MemFree(block); }
    static void operator delete(void *, void *) noexcept {}
};
} // namespace OSG
