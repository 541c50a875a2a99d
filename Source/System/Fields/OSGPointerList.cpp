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
void move_slots(FieldContainer **to, FieldContainer *const *from, UInt32 count)
{
    if(count != 0)
        std::memmove(to, from, count * sizeof(FieldContainer *));
}
} // namespace

PointerList::~PointerList() { MemFree(_slots); }

void PointerList::swap(PointerList &other) noexcept
{
    std::swap(_slots, other._slots);
    std::swap(_size, other._size);
    std::swap(_capacity, other._capacity);
    std::swap(_gapStart, other._gapStart);
    std::swap(_gapLength, other._gapLength);
}

// --- room ---

void PointerList::reallocate(UInt32 capacity)
{
    auto **const slots = static_cast<FieldContainer **>(
        MemMallocOrThrow(static_cast<std::size_t>(capacity) * sizeof(FieldContainer *)));
    UInt32 const before = std::min(_gapStart, _size);
    move_slots(slots, _slots, before);
    move_slots(slots + before, _slots + before + _gapLength, _size - before);
    MemFree(_slots);
    _slots = slots;
    _capacity = capacity;
    _gapLength = 0;
}

void PointerList::reserve(UInt32 count)
{
    if(count > _capacity)
        reallocate(count);
    else if(count > _capacity - _gapLength)
        closeGap();
}

// A gap is only closed for the room that it gives, where that pays for the way.
void PointerList::makeRoom()
{
    constexpr UInt32 Most = std::numeric_limits<UInt32>::max();
    if(_gapLength > _capacity / 4)
        closeGap();
    else if(_size == Most)
        throw std::bad_array_new_length();
    else
        reallocate(_size > Most / 2 ? Most : std::max(_size * 2, 1u));
}

// --- the gap ---

void PointerList::moveGapTo(UInt32 index)
{
    if(_gapLength != 0 && index < _gapStart)
        move_slots(_slots + index + _gapLength, _slots + index, _gapStart - index);
    else if(_gapLength != 0)
        move_slots(_slots + _gapStart, _slots + _gapStart + _gapLength, index - _gapStart);
    _gapStart = index;
}

void PointerList::closeGap()
{
    moveGapTo(_size);
    _gapLength = 0;
}

// --- edits ---

void PointerList::push_back(FieldContainer *value)
{
    if(slotsEnd() == _capacity)
        makeRoom();
    _slots[slotsEnd()] = value;
    ++_size;
}

void PointerList::insert(UInt32 index, FieldContainer *value)
{
    if(_gapLength != 0)
    {
        moveGapTo(index);
        ++_gapStart;
        --_gapLength;
        ++_size;
    }
    else
    {
        push_back(value);
        move_slots(_slots + index + 1, _slots + index, _size - 1 - index);
    }
    _slots[index] = value;
}

void PointerList::erase(UInt32 index)
{
    bool const isLast = index + 1 == _size && index >= _gapStart;
    if(!isLast)
    {
        // The entry ends up beside the gap and is swallowed by it.
        bool const isBefore = index < _gapStart && _gapLength != 0;
        moveGapTo(isBefore ? index + 1 : index);
        _gapStart = index;
        ++_gapLength;
    }
    --_size;
    // A gap at the end is spare room.
    if(_gapStart >= _size)
        _gapLength = 0;
}

// --- looking ---

UInt32 PointerList::find(FieldContainer const *value) const
{
    UInt32 index = 0;
    while(index < _size && (*this)[index] != value)
        ++index;
    return index;
}

UInt32 PointerList::findNear(FieldContainer const *value, UInt32 &slot) const
{
    UInt32 const gapEnd = _gapStart + _gapLength;
    bool const isUsed = slot < slotsEnd() && (slot < _gapStart || slot >= gapEnd);
    if(isUsed && _slots[slot] == value)
        return slot < _gapStart ? slot : slot - _gapLength;
    UInt32 left = std::min(_gapStart, _size);
    UInt32 right = left + _gapLength;
    while(left > 0 || right < slotsEnd())
    {
        if(left > 0 && _slots[--left] == value)
        {
            slot = left;
            return left;
        }
        if(right < slotsEnd() && _slots[right] == value)
        {
            slot = right;
            return right - _gapLength;
        }
        right = std::min(right + 1, slotsEnd());
    }
    return _size;
}
} // namespace OSG
