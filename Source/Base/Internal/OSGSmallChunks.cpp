#include "OSGSmallChunks.h"

#include <algorithm>
#include <bit>
#include <cassert>

#include "OSGPages.h"
#include "OSGShortLock.h"
#include "OSGSmallBlocks.h"

namespace OSG
{
constinit SmallChunkMap small_chunk_map;

namespace
{
constexpr std::size_t ChunkBytes = std::size_t(1) << SmallChunkBits;
constexpr std::size_t AreaBytes = std::size_t(1) << 21;
constexpr std::size_t ChunksPerArea = AreaBytes / ChunkBytes;
constexpr std::size_t RangeBytes = std::size_t(1) << SmallRangeBits;
constexpr std::size_t WordBits = 64;

template <class T>
class Links
{
  public:
    T *first() const { return _first; }
    void push(T &item)
    {
        item.previous = nullptr;
        item.next = _first;
        if(_first != nullptr)
            _first->previous = &item;
        _first = &item;
    }
    void remove(T &item)
    {
        (item.previous != nullptr ? item.previous->next : _first) = item.next;
        if(item.next != nullptr)
            item.next->previous = item.previous;
    }

  private:
    T *_first = nullptr;
};

/// A bit of `free` for each block says whether the block is free. Blocks in the lists of threads
/// count as taken.
struct Chunk
{
    Chunk *next;
    Chunk *previous;
    char *begin;
    UInt32 blockBytes;
    UInt32 inverse; // of blockBytes, times 2^32
    UInt32 count;
    UInt32 numFree;
    UInt32 firstWord; // no word before it has a bit
    UInt64 free[ChunkBytes / SmallBlockStep / WordBits];

    // Offsets have 16 bits and sizes at most 9, so the product with the rounded inverse has the
    // quotient in its upper half.
    UInt32 indexOf(void const *block) const
    {
        auto const offset = static_cast<UInt64>(static_cast<char const *>(block) - begin);
        return static_cast<UInt32>(offset * inverse >> 32);
    }
    void carve(char *memory, UInt32 sizeClass);
    FreeSmallBlock *takeOne();
    void giveOne(void *block);
};

void Chunk::carve(char *memory, UInt32 sizeClass)
{
    begin = memory;
    blockBytes = static_cast<UInt32>(sizeClass * SmallBlockStep);
    inverse = static_cast<UInt32>((UInt64(1) << 32) / blockBytes + 1);
    count = static_cast<UInt32>(ChunkBytes / blockBytes);
    numFree = count;
    firstWord = 0;
    UInt32 const words = count / WordBits;
    std::fill_n(free, words, ~UInt64(0));
    if(count % WordBits != 0)
        free[words] = (UInt64(1) << count % WordBits) - 1;
}

// There is a free block.
FreeSmallBlock *Chunk::takeOne()
{
    while(free[firstWord] == 0)
        ++firstWord;
    auto const bit = static_cast<UInt32>(std::countr_zero(free[firstWord]));
    free[firstWord] &= free[firstWord] - 1;
    --numFree;
    std::size_t const index = firstWord * WordBits + bit;
    return reinterpret_cast<FreeSmallBlock *>(begin + index * blockBytes);
}

void Chunk::giveOne(void *block)
{
    UInt32 const index = indexOf(block);
    auto const word = static_cast<UInt32>(index / WordBits);
    UInt64 const bit = UInt64(1) << index % WordBits;
    assert((free[word] & bit) == 0 && "a block is freed twice");
    free[word] |= bit;
    ++numFree;
    firstWord = std::min(firstWord, word);
}

constexpr UInt32 AllChunksEmpty = static_cast<UInt32>((UInt64(1) << ChunksPerArea) - 1);

struct Area
{
    Area *next;
    Area *previous;
    char *begin;
    UInt32 empty; // a bit for each chunk without blocks
};
} // namespace

struct SmallRange
{
    SmallChunkMap::ChunkClass classes[RangeBytes / ChunkBytes];
    Area areas[RangeBytes / AreaBytes];
    Chunk chunks[RangeBytes / ChunkBytes];
};

namespace
{
// An address in a chunk or area that exists.
SmallRange &range_of(void const *address)
{
    return *reinterpret_cast<SmallRange *>(small_chunk_map.rangeAt(address)->load());
}
std::size_t place_in_range(void const *address)
{
    return reinterpret_cast<std::uintptr_t>(address) & (RangeBytes - 1);
}
Chunk &chunk_of(void const *block)
{
    return range_of(block).chunks[place_in_range(block) / ChunkBytes];
}
Area &area_of(void const *block)
{
    return range_of(block).areas[place_in_range(block) / AreaBytes];
}

// --- all chunks ---

struct AllChunks
{
    ShortLock guard;
    std::atomic<void const *> forkingThread{nullptr}; // that one holds the guard
    Links<Chunk> partial[SmallClasses];               // with free blocks and taken ones
    Links<Area> open;                                 // with empty chunks and used ones
    Links<Area> idle;                                 // without blocks
    Links<Area> cold; // without blocks, and the memory is with the system
    std::size_t numIdle = 0;
    std::size_t numResident = 0;

    Chunk *findPartial(UInt32 sizeClass);
    void giveEmpty(Chunk &chunk);

  private:
    bool openArea();
    Area *mapArea();
};
constinit AllChunks all_chunks;

void const *this_thread() { return &small_block_cache; }

/// Holds the guard, unless this thread has it for a fork.
class Hold
{
  public:
    Hold()
        : _isFork(all_chunks.forkingThread.load(std::memory_order_relaxed) == this_thread())
    {
        if(!_isFork)
            all_chunks.guard.lock();
    }
    ~Hold()
    {
        if(!_isFork)
            all_chunks.guard.unlock();
    }
    Hold(Hold const &) = delete;
    Hold &operator=(Hold const &) = delete;

  private:
    bool const _isFork;
};

Area *AllChunks::mapArea()
{
    auto *const memory = static_cast<char *>(map_aligned_pages(AreaBytes));
    std::atomic<SmallChunkMap::ChunkClass *> *const range =
        memory != nullptr ? small_chunk_map.rangeAt(memory) : nullptr;
    if(range == nullptr)
        return nullptr;
    if(range->load() == nullptr)
    {
        auto *const fresh = static_cast<SmallRange *>(map_pages(sizeof(SmallRange)));
        if(fresh == nullptr)
            return nullptr;
        range->store(fresh->classes);
    }
    Area &area = area_of(memory);
    area.begin = memory;
    return &area;
}

bool AllChunks::openArea()
{
    Area *area = idle.first();
    if(area != nullptr)
    {
        idle.remove(*area);
        --numIdle;
    }
    else
    {
        area = cold.first();
        if(area != nullptr)
            cold.remove(*area);
        else
            area = mapArea();
        if(area == nullptr)
            return false;
        ++numResident;
    }
    area->empty = AllChunksEmpty;
    open.push(*area);
    return true;
}

Chunk *AllChunks::findPartial(UInt32 sizeClass)
{
    if(partial[sizeClass].first() != nullptr)
        return partial[sizeClass].first();
    if(open.first() == nullptr && !openArea())
        return nullptr;
    Area &area = *open.first();
    char *const memory = area.begin + std::countr_zero(area.empty) * ChunkBytes;
    area.empty &= area.empty - 1;
    if(area.empty == 0)
        open.remove(area);
    Chunk &chunk = chunk_of(memory);
    chunk.carve(memory, sizeClass);
    range_of(memory).classes[place_in_range(memory) / ChunkBytes].store(
        static_cast<UInt8>(sizeClass), std::memory_order_relaxed);
    partial[sizeClass].push(chunk);
    return &chunk;
}

void AllChunks::giveEmpty(Chunk &chunk)
{
    Area &area = area_of(chunk.begin);
    if(area.empty == 0)
        open.push(area);
    area.empty |= UInt32(1) << static_cast<std::size_t>(chunk.begin - area.begin) / ChunkBytes;
    if(area.empty != AllChunksEmpty)
        return;
    open.remove(area);
    if(numIdle < MostIdleBytes / AreaBytes)
    {
        idle.push(area);
        ++numIdle;
        return;
    }
    discard_pages(area.begin, AreaBytes);
    cold.push(area);
    --numResident;
}
} // namespace

FreeSmallBlock *take_small_blocks(UInt32 sizeClass, UInt32 count) noexcept
{
    Hold const hold;
    FreeSmallBlock *list = nullptr;
    FreeSmallBlock **end = &list;
    while(count != 0)
    {
        Chunk *const chunk = all_chunks.findPartial(sizeClass);
        if(chunk == nullptr)
            break;
        for(; count != 0 && chunk->numFree != 0; --count)
        {
            *end = chunk->takeOne();
            end = &(*end)->next;
        }
        if(chunk->numFree == 0)
            all_chunks.partial[sizeClass].remove(*chunk);
    }
    *end = nullptr;
    return list;
}

void give_small_blocks(FreeSmallBlock *list) noexcept
{
    Hold const hold;
    while(list != nullptr)
    {
        FreeSmallBlock *const block = list;
        list = list->next;
        Chunk &chunk = chunk_of(block);
        Links<Chunk> &partial = all_chunks.partial[chunk.blockBytes / SmallBlockStep];
        if(chunk.numFree == 0)
            partial.push(chunk);
        chunk.giveOne(block);
        if(chunk.numFree == chunk.count)
        {
            partial.remove(chunk);
            all_chunks.giveEmpty(chunk);
        }
    }
}

void lock_small_chunks() noexcept
{
    all_chunks.guard.lock();
    all_chunks.forkingThread.store(this_thread());
}

void unlock_small_chunks() noexcept
{
    all_chunks.forkingThread.store(nullptr);
    all_chunks.guard.unlock();
}

std::size_t small_area_bytes() noexcept
{
    Hold const hold;
    return all_chunks.numResident * AreaBytes;
}
} // namespace OSG
