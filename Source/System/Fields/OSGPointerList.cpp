#include "OSGPointerList.h"

#include <algorithm>
#include <bit>
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
    else if(isSparse())
        MemFree(sparse());
    _bits = 0;
}

void PointerList::swap(PointerList &other) noexcept { std::swap(_bits, other._bits); }

// --- room ---

// The entries go to a new block, without a gap.
void PointerList::moveToBlock(UInt32 capacity)
{
    auto *const fresh = static_cast<Block *>(
        mem_malloc_or_throw(sizeof(Block) + std::size_t(capacity) * sizeof(FieldContainer *)));
    auto **const to = reinterpret_cast<FieldContainer **>(fresh + 1);
    UInt32 const count = size();
    *fresh = Block{count, capacity, 0, 0};
    if(isBlock())
    {
        UInt32 const before = std::min(block()->gapStart, count);
        move_slots(to, cells(), before);
        move_slots(to + before, cells() + before + block()->gapLength, count - before);
        MemFree(block());
    }
    else
    {
        for(UInt32 i = 0; i < count; ++i)
            to[i] = (*this)[i];
        if(isSparse())
            MemFree(sparse());
    }
    _bits = reinterpret_cast<std::uintptr_t>(fresh) + 1;
}

void PointerList::reserve(UInt32 count)
{
    if(!isBlock())
    {
        if(count > std::max(size(), 1u))
            moveToBlock(count);
        return;
    }
    if(count > block()->capacity)
        moveToBlock(count);
    else if(count > block()->capacity - block()->gapLength)
        closeGap();
}

// A gap is closed for its room only where it is large enough to pay for moving the entries.
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
        move_slots(cells() + index + length, cells() + index, start - index);
    else if(length != 0)
        move_slots(cells() + start, cells() + start + length, index - start);
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
        cells()[slotOf(index)] = value;
    else if(isSparse())
        putAt(index, value);
    else
        _bits = bitsOf(value);
}

void PointerList::putAt(UInt32 index, FieldContainer *value)
{
    if(!isBlock() && putSparse(index, value))
        return;
    becomeDense();
    reserve(index + 1);
    while(size() <= index)
        push_back(nullptr);
    set(index, value);
}

// --- few entries in use ---

UInt32 PointerList::sparseSize() const
{
    // The group of four bits that holds the highest bit set belongs to the last index.
    return MostSparse - static_cast<UInt32>(std::countl_zero(sparse()->places)) / 4;
}

UInt32 PointerList::sparseEntries() const
{
    UInt32 count = 0;
    for(UInt32 i = 0; i < sparseSize(); ++i)
        count = std::max(count, sparse()->placeOf(i));
    return count;
}

FieldContainer *PointerList::sparseAt(UInt32 index) const
{
    UInt32 const place = _bits != NullEntry ? sparse()->placeOf(index) : 0;
    return place != 0 ? sparse()->entries()[place - 1] : nullptr;
}

// False if the list is no sparse one, or has to become another kind to hold the value.
bool PointerList::putSparse(UInt32 index, FieldContainer *value)
{
    if(index == 0 && !isSparse())
    {
        _bits = bitsOf(value);
        return true;
    }
    if(index >= MostSparse)
        return false;
    if(isSparse())
    {
        if(value == nullptr && index < sparseSize() && sparse()->placeOf(index) == 0)
            return true;
        if(putIntoEntries(index, value))
            return true;
    }
    return growSparse(index, value);
}

// Uses the index's own entry, or one that holds the pointer already. False if there is neither.
bool PointerList::putIntoEntries(UInt32 index, FieldContainer *value)
{
    Sparse &block = *sparse();
    UInt32 const own = block.placeOf(index);
    UInt32 users = 0;
    for(UInt32 i = 0; i < sparseSize(); ++i)
        users += own != 0 && block.placeOf(i) == own ? 1 : 0;
    if(users == 1)
    {
        block.entries()[own - 1] = value;
        return true;
    }
    UInt32 const count = sparseEntries();
    UInt32 place = 1;
    while(place <= count && block.entries()[place - 1] != value)
        ++place;
    if(place > count)
        return false;
    block.setPlace(index, place);
    return true;
}

// A block with one entry more.
bool PointerList::growSparse(UInt32 index, FieldContainer *value)
{
    bool const isOne = _bits != 0 && !isSparse();
    UInt32 const count = isOne ? 1 : isSparse() ? sparseEntries() : 0;
    if(count == MostEntries)
        return false;
    bool const isSame = isOne && (*this)[0] == value;
    UInt32 const place = isSame ? 1 : count + 1;
    auto *const grown = static_cast<Sparse *>(
        mem_malloc_or_throw(sizeof(Sparse) + place * sizeof(FieldContainer *)));
    grown->places = isOne ? 1 : isSparse() ? sparse()->places : 0;
    if(isOne)
        grown->entries()[0] = (*this)[0];
    else if(isSparse())
        move_slots(grown->entries(), sparse()->entries(), count);
    grown->entries()[place - 1] = value;
    grown->setPlace(index, place);
    if(isSparse())
        MemFree(sparse());
    _bits = reinterpret_cast<std::uintptr_t>(grown) + NullEntry;
    return true;
}

// Edits of more than single entries are only written for plain arrays.
void PointerList::becomeDense()
{
    if(isSparse())
        moveToBlock(size());
}

void PointerList::push_back(FieldContainer *value)
{
    becomeDense();
    if(_bits == 0)
    {
        _bits = bitsOf(value);
        return;
    }
    if(!isBlock())
        moveToBlock(FirstCapacity);
    else if(slotsEnd() == block()->capacity)
        makeRoom();
    cells()[slotsEnd()] = value;
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
        move_slots(cells() + index + 1, cells() + index, size() - 1 - index);
    }
    cells()[index] = value;
}

void PointerList::erase(UInt32 index)
{
    becomeDense();
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
    if(isUsed && cells()[slot] == value)
        return slot < gapStart ? slot : slot - gapLength;
    UInt32 left = std::min(gapStart, size());
    UInt32 right = left + gapLength;
    while(left > 0 || right < slotsEnd())
    {
        if(left > 0 && cells()[--left] == value)
            return left;
        if(right < slotsEnd() && cells()[right] == value)
            return right - gapLength;
        right = std::min(right + 1, slotsEnd());
    }
    return size();
}
} // namespace OSG
