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
#else
void *map_pages(std::size_t) noexcept { return nullptr; }
void *map_aligned_pages(std::size_t) noexcept { return nullptr; }
void discard_pages(void *, std::size_t) noexcept {}
#endif
} // namespace OSG
