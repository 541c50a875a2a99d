#include "OSGPointerList.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "OSGMemManager.h"

namespace OSG
{
namespace
{
// With the head of a block and the allocator's own, 3, 7, 15 ... slots fill multiples of 16 bytes.
constexpr UInt32 FirstCapacity = 3;

void move_slots(FieldContainer **to, FieldContainer *const *from, UInt32 count)
{
    if(count != 0)
        std::memmove(to, from, count * sizeof(FieldContainer *));
}
} // namespace

void PointerList::clear()
{
    if(isBlock())
        MemFree(block());
    _bits = 0;
}

void PointerList::swap(PointerList &other) noexcept { std::swap(_bits, other._bits); }

// --- room ---

// The entries go to a new block, without a gap.
void PointerList::moveToBlock(UInt32 capacity)
{
    auto *const fresh = static_cast<Block *>(
        MemMallocOrThrow(sizeof(Block) + std::size_t(capacity) * sizeof(FieldContainer *)));
    auto **const to = reinterpret_cast<FieldContainer **>(fresh + 1);
    UInt32 const count = size();
    *fresh = Block{count, capacity, 0, 0};
    if(isBlock())
    {
        UInt32 const before = std::min(block()->gapStart, count);
        move_slots(to, slots(), before);
        move_slots(to + before, slots() + before + block()->gapLength, count - before);
        MemFree(block());
    }
    else if(count != 0)
    {
        to[0] = (*this)[0];
    }
    _bits = reinterpret_cast<std::uintptr_t>(fresh) + 1;
}

void PointerList::reserve(UInt32 count)
{
    if(!isBlock())
    {
        if(count > 1)
            moveToBlock(count);
        return;
    }
    if(count > block()->capacity)
        moveToBlock(count);
    else if(count > block()->capacity - block()->gapLength)
        closeGap();
}

// A gap is only closed for the room that it gives, where that pays for the way.
void PointerList::makeRoom()
{
    constexpr UInt32 Most = std::numeric_limits<UInt32>::max();
    UInt32 const count = size();
    if(block()->gapLength > block()->capacity / 4)
        closeGap();
    else if(count == Most)
        throw std::bad_array_new_length();
    else
        moveToBlock(count > (Most - 1) / 2 ? Most : 2 * count + 1);
}

// --- the gap ---

void PointerList::moveGapTo(UInt32 index)
{
    UInt32 const start = block()->gapStart;
    UInt32 const length = block()->gapLength;
    if(length != 0 && index < start)
        move_slots(slots() + index + length, slots() + index, start - index);
    else if(length != 0)
        move_slots(slots() + start, slots() + start + length, index - start);
    block()->gapStart = index;
}

void PointerList::closeGap()
{
    moveGapTo(block()->size);
    block()->gapLength = 0;
}

// --- edits ---

void PointerList::set(UInt32 index, FieldContainer *value)
{
    if(isBlock())
        slots()[slotOf(index)] = value;
    else
        _bits = bitsOf(value);
}

void PointerList::push_back(FieldContainer *value)
{
    if(_bits == 0)
    {
        _bits = bitsOf(value);
        return;
    }
    if(!isBlock())
        moveToBlock(FirstCapacity);
    else if(slotsEnd() == block()->capacity)
        makeRoom();
    slots()[slotsEnd()] = value;
    ++block()->size;
}

void PointerList::insert(UInt32 index, FieldContainer *value)
{
    if(isBlock() && block()->gapLength != 0)
    {
        moveGapTo(index);
        ++block()->gapStart;
        --block()->gapLength;
        ++block()->size;
    }
    else
    {
        push_back(value);
        if(!isBlock())
            return;
        move_slots(slots() + index + 1, slots() + index, size() - 1 - index);
    }
    slots()[index] = value;
}

void PointerList::erase(UInt32 index)
{
    if(!isBlock())
    {
        _bits = 0;
        return;
    }
    Block &all = *block();
    bool const isLast = index + 1 == all.size && index >= all.gapStart;
    if(!isLast)
    {
        // The entry ends up beside the gap and is swallowed by it.
        bool const isBefore = index < all.gapStart && all.gapLength != 0;
        moveGapTo(isBefore ? index + 1 : index);
        all.gapStart = index;
        ++all.gapLength;
    }
    --all.size;
    // A gap at the end is spare room.
    if(all.gapStart >= all.size)
        all.gapLength = 0;
}

// --- looking ---

UInt32 PointerList::find(FieldContainer const *value) const
{
    UInt32 const count = size();
    UInt32 index = 0;
    while(index < count && (*this)[index] != value)
        ++index;
    return index;
}

UInt32 PointerList::findNear(FieldContainer const *value, UInt32 slot) const
{
    if(!isBlock())
        return find(value);
    UInt32 const gapStart = block()->gapStart;
    UInt32 const gapLength = block()->gapLength;
    bool const isUsed = slot < slotsEnd() && (slot < gapStart || slot >= gapStart + gapLength);
    if(isUsed && slots()[slot] == value)
        return slot < gapStart ? slot : slot - gapLength;
    UInt32 left = std::min(gapStart, size());
    UInt32 right = left + gapLength;
    while(left > 0 || right < slotsEnd())
    {
        if(left > 0 && slots()[--left] == value)
            return left;
        if(right < slotsEnd() && slots()[right] == value)
            return right - gapLength;
        right = std::min(right + 1, slotsEnd());
    }
    return size();
}
} // namespace OSG
