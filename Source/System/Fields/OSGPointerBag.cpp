#include "OSGPointerBag.h"

#include <algorithm>
#include <limits>
#include <new>

#include "OSGFieldContainer.h"
#include "OSGMemManager.h"

namespace OSG
{
PointerBag::~PointerBag()
{
    if(isBlock())
        MemFree(block());
}

// --- table ---

// Blocks of the allocator differ in the bits above the lowest four; the product with the golden
// ratio spreads them (Knuth, The Art of Computer Programming 3, 6.4).
UInt32 PointerBag::homeOf(FieldContainer const *entry) const
{
    constexpr UInt64 GoldenRatio = 0x9E3779B97F4A7C15u;
    UInt64 const bits = reinterpret_cast<std::uintptr_t>(entry) >> 4;
    return static_cast<UInt32>(bits * GoldenRatio >> 32) & tableMask();
}

// Of an entry that is in here; otherwise the free place at which its search ends.
UInt32 PointerBag::placeOf(FieldContainer const *entry) const
{
    UInt32 place = homeOf(entry);
    while(table()[place] != NoEntry && entries()[table()[place]] != entry)
        place = (place + 1) & tableMask();
    return place;
}

void PointerBag::enterTable(UInt32 index) { table()[placeOf(entries()[index])] = index; }

// Entries behind the place move up, as far as their own search begins before it.
void PointerBag::leaveTable(UInt32 place)
{
    UInt32 const mask = tableMask();
    UInt32 next = (place + 1) & mask;
    for(; table()[next] != NoEntry; next = (next + 1) & mask)
    {
        UInt32 const home = homeOf(entries()[table()[next]]);
        if(((next - home) & mask) < ((next - place) & mask))
            continue;
        table()[place] = table()[next];
        place = next;
    }
    table()[place] = NoEntry;
}

// --- entries ---

UInt32 PointerBag::find(FieldContainer const *entry) const
{
    if(isBlock() && hasTable())
        return std::min(table()[placeOf(entry)], size());
    UInt32 index = 0;
    while(index < size() && (*this)[index] != entry)
        ++index;
    return index;
}

void PointerBag::grow()
{
    constexpr UInt32 Most = std::numeric_limits<UInt32>::max() / 4;
    UInt32 const count = size();
    if(count > Most)
        throw std::bad_array_new_length();
    UInt32 const capacity = isBlock() ? 2 * block()->capacity : 2;
    std::size_t const tableSize = capacity > Linear ? 2 * std::size_t(capacity) : 0;
    auto *const fresh = static_cast<Block *>(
        mem_malloc_or_throw(sizeof(Block) + std::size_t(capacity) * sizeof(FieldContainer *) +
                            tableSize * sizeof(UInt32)));
    *fresh = Block{count, capacity};
    auto **const to = reinterpret_cast<FieldContainer **>(fresh + 1);
    for(UInt32 i = 0; i < count; ++i)
        to[i] = (*this)[i];
    if(isBlock())
        MemFree(block());
    _bits = reinterpret_cast<std::uintptr_t>(fresh) + 1;
    std::fill_n(table(), tableSize, NoEntry);
    for(UInt32 i = 0; tableSize != 0 && i < count; ++i)
        enterTable(i);
}

void PointerBag::insert(FieldContainer *entry)
{
    if(_bits == 0)
    {
        _bits = reinterpret_cast<std::uintptr_t>(entry);
        return;
    }
    if(!isBlock() || block()->size == block()->capacity)
        grow();
    UInt32 const index = block()->size++;
    entries()[index] = entry;
    if(hasTable())
        enterTable(index);
}

bool PointerBag::erase(FieldContainer const *entry)
{
    UInt32 const index = find(entry);
    if(index == size())
        return false;
    if(!isBlock())
    {
        _bits = 0;
        return true;
    }
    UInt32 const last = block()->size - 1;
    FieldContainer *const moved = entries()[last];
    if(hasTable())
    {
        leaveTable(placeOf(entry));
        if(index != last)
            table()[placeOf(moved)] = index;
    }
    entries()[index] = moved;
    block()->size = last;
    return true;
}
} // namespace OSG
