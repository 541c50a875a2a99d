#pragma once

/// \file
/// What the pool of small blocks consists of. Blocks of one size lie in a chunk of 64 KiB, and 32
/// chunks in an area of 2 MiB. The memory of an area may go back to the system when all of its
/// blocks are free; its addresses are kept for the next area.

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "OSGBaseTypes.h"

namespace OSG
{
/// Blocks have multiples of this size.
inline constexpr std::size_t SmallBlockStep = 16;
inline constexpr std::size_t MostSmallBytes = 256;
/// The class of a size is the number of its steps. Class 0 has no blocks.
inline constexpr UInt32 SmallClasses = MostSmallBytes / SmallBlockStep + 1;

/// A free block points to the next one of its list.
struct FreeSmallBlock
{
    FreeSmallBlock *next;
};

/// At most `count` free blocks of a class. Those of one chunk come by ascending addresses. Null
/// where there is no memory.
FreeSmallBlock *take_small_blocks(UInt32 sizeClass, UInt32 count) noexcept;
/// Gives the blocks of a list back. Their classes may differ.
void give_small_blocks(FreeSmallBlock *list) noexcept;

/// While the process forks, the forking thread alone uses the chunks, so that the child finds them
/// whole. Its handlers of the fork may take and give blocks.
void lock_small_chunks() noexcept;
void unlock_small_chunks() noexcept;

/// The bytes of all areas whose memory is not with the system.
std::size_t small_area_bytes() noexcept;
/// This many bytes of areas without blocks stay with the process, so that the next scene does not
/// have to fetch them again.
inline constexpr std::size_t MostIdleBytes = std::size_t(64) << 20;

inline constexpr unsigned SmallChunkBits = 16;
inline constexpr unsigned SmallRangeBits = 31;

/// What the pool knows about the chunks in 2 GiB of addresses. The system gives memory for the
/// parts that are used.
struct SmallRange;

/// The classes of all chunks, by their addresses.
class SmallChunkMap
{
  public:
    /// The class of the chunk around an address, 0 where no chunk lies.
    UInt32 classOf(void const *address) const
    {
        auto const bits = reinterpret_cast<std::uintptr_t>(address);
        if(bits >> AddressBits != 0)
            return 0;
        ChunkClass const *const classes =
            _ranges[bits >> SmallRangeBits].load(std::memory_order_acquire);
        if(classes == nullptr)
            return 0;
        return classes[(bits & RangeMask) >> SmallChunkBits].load(std::memory_order_relaxed);
    }

    // A range begins with the classes of its chunks.
    using ChunkClass = std::atomic<UInt8>;
    /// Null where no area lies in the range yet, and beyond the addresses that the map knows.
    std::atomic<ChunkClass *> *rangeAt(void const *address)
    {
        auto const bits = reinterpret_cast<std::uintptr_t>(address);
        return bits >> AddressBits == 0 ? &_ranges[bits >> SmallRangeBits] : nullptr;
    }

  private:
    static constexpr unsigned AddressBits = 48;
    static constexpr std::uintptr_t RangeMask = (std::uintptr_t(1) << SmallRangeBits) - 1;

    std::atomic<ChunkClass *> _ranges[std::size_t(1) << (AddressBits - SmallRangeBits)]{};
};
extern constinit SmallChunkMap small_chunk_map;
} // namespace OSG
