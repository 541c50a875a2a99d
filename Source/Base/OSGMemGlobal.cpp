/// \file
/// Routes the global operators new and delete of a program to MemMalloc and MemFree. An executable
/// links this source to count and to exhaust all of its memory; no library may contain it.

#include <cstdint>
#include <new>

#include "OSGMemManager.h"

namespace
{
constexpr std::size_t PlainAlignment = __STDCPP_DEFAULT_NEW_ALIGNMENT__;

/// Calls MemMalloc, and the new-handler as long as MemMalloc fails and there is one.
void *allocate(std::size_t size)
{
    for(;;)
    {
        if(void *const block = OSG::MemMalloc(size))
            return block;
        std::new_handler const handler = std::get_new_handler();
        if(handler == nullptr)
            throw std::bad_alloc();
        handler();
    }
}

/// A block of a larger alignment stores the address that MemMalloc returned just before its first
/// byte.
void *allocate_aligned(std::size_t size, std::size_t alignment)
{
    if(alignment <= PlainAlignment)
        return allocate(size);
    std::size_t const room = alignment + sizeof(void *);
    if(size > static_cast<std::size_t>(-1) - room)
        throw std::bad_alloc();
    void *const block = allocate(size + room);
    std::uintptr_t const first = reinterpret_cast<std::uintptr_t>(block) + sizeof(void *);
    std::uintptr_t const aligned = (first + alignment - 1) & ~(alignment - 1);
    reinterpret_cast<void **>(aligned)[-1] = block;
    return reinterpret_cast<void *>(aligned);
}

void release_aligned(void *block, std::size_t alignment) noexcept
{
    if(block != nullptr && alignment > PlainAlignment)
        block = static_cast<void **>(block)[-1];
    OSG::MemFree(block);
}

template <class Allocate>
void *or_null(Allocate const &allocation) noexcept
{
    try
    {
        return allocation();
    }
    catch(...)
    {
        return nullptr;
    }
}
} // namespace

using std::align_val_t;
using std::nothrow_t;
using std::size_t;

// clang-format off
void *operator new(size_t n) { return allocate(n); }
void *operator new[](size_t n) { return allocate(n); }
void *operator new(size_t n, nothrow_t const &) noexcept { return or_null([n] { return allocate(n); }); }
void *operator new[](size_t n, nothrow_t const &) noexcept { return or_null([n] { return allocate(n); }); }
void *operator new(size_t n, align_val_t a) { return allocate_aligned(n, size_t(a)); }
void *operator new[](size_t n, align_val_t a) { return allocate_aligned(n, size_t(a)); }
void *operator new(size_t n, align_val_t a, nothrow_t const &) noexcept { return or_null([=] { return allocate_aligned(n, size_t(a)); }); }
void *operator new[](size_t n, align_val_t a, nothrow_t const &) noexcept { return or_null([=] { return allocate_aligned(n, size_t(a)); }); }

void operator delete(void *p) noexcept { OSG::MemFree(p); }
void operator delete[](void *p) noexcept { OSG::MemFree(p); }
void operator delete(void *p, size_t) noexcept { OSG::MemFree(p); }
void operator delete[](void *p, size_t) noexcept { OSG::MemFree(p); }
void operator delete(void *p, nothrow_t const &) noexcept { OSG::MemFree(p); }
void operator delete[](void *p, nothrow_t const &) noexcept { OSG::MemFree(p); }
void operator delete(void *p, align_val_t a) noexcept { release_aligned(p, size_t(a)); }
void operator delete[](void *p, align_val_t a) noexcept { release_aligned(p, size_t(a)); }
void operator delete(void *p, size_t, align_val_t a) noexcept { release_aligned(p, size_t(a)); }
void operator delete[](void *p, size_t, align_val_t a) noexcept { release_aligned(p, size_t(a)); }
void operator delete(void *p, align_val_t a, nothrow_t const &) noexcept { release_aligned(p, size_t(a)); }
void operator delete[](void *p, align_val_t a, nothrow_t const &) noexcept { release_aligned(p, size_t(a)); }
// clang-format on
