#include "OSGPages.h"

#include <cstdint>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace OSG
{
#ifdef __linux__
void *map_pages(std::size_t bytes) noexcept
{
    void *const pages = mmap(nullptr, bytes, PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return pages != MAP_FAILED ? pages : nullptr;
}

// A mapping of twice the size contains an aligned one. What lies around that goes back at once.
void *map_aligned_pages(std::size_t bytes) noexcept
{
    auto *const begin = static_cast<char *>(map_pages(2 * bytes));
    if(begin == nullptr)
        return nullptr;
    std::size_t const before = (0 - reinterpret_cast<std::uintptr_t>(begin)) & (bytes - 1);
    if(before != 0)
        munmap(begin, before);
    munmap(begin + before + bytes, bytes - before);
    return begin + before;
}

void discard_pages(void *begin, std::size_t bytes) noexcept
{
    madvise(begin, bytes, MADV_DONTNEED);
}

void prefer_large_pages(void *begin, std::size_t bytes) noexcept
{
    // The range begins and ends with whole pages.
    constexpr std::uintptr_t PageMask = 4095;
    auto const first = reinterpret_cast<std::uintptr_t>(begin) & ~PageMask;
    auto const behind = (reinterpret_cast<std::uintptr_t>(begin) + bytes + PageMask) & ~PageMask;
    madvise(reinterpret_cast<void *>(first), behind - first, MADV_HUGEPAGE);
}
#else
void prefer_large_pages(void *, std::size_t) noexcept {}
void *map_pages(std::size_t) noexcept { return nullptr; }
void *map_aligned_pages(std::size_t) noexcept { return nullptr; }
void discard_pages(void *, std::size_t) noexcept {}
#endif
} // namespace OSG
