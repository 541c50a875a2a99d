#pragma once

/// \file
/// Memory from the system for the pool of small blocks.

#include <cstddef>

namespace OSG
{
/// `bytes` of zeros; the system takes memory for what is touched. Null where there is none, and on
/// systems that the pool does not know.
void *map_pages(std::size_t bytes) noexcept;
/// The same at an address that `bytes`, a power of two, divides.
void *map_aligned_pages(std::size_t bytes) noexcept;
/// Gives memory back to the system. The addresses stay valid, and what is read there later is zero.
void discard_pages(void *begin, std::size_t bytes) noexcept;
/// Asks the system to back a range with large pages, where it has them. Each page is then fetched
/// when it is touched first, so that a large array costs a few interruptions instead of thousands.
void prefer_large_pages(void *begin, std::size_t bytes) noexcept;
/// Smaller ranges have no large page.
inline constexpr std::size_t LargePageBytes = std::size_t(2) << 20;
} // namespace OSG
