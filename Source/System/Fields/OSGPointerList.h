#pragma once

/// \file
/// The list behind pointer fields: small where it is short, quick to edit where it is long.

#include <cstddef>
#include <cstdint>
#include <iterator>

#include "OSGBaseTypes.h"
#include "OSGSystemApi.h"

namespace OSG
{
class FieldContainer;

/// An array of pointers that takes the room of one. Most lists of a scene hold one pointer or none:
/// one stands in the list itself, only more take a block of MemMalloc, an array that may have a
/// gap. A short list that putAt() fills has a block with room for the entries in use alone.
///
///     slot    0  1  2  3  4  5  6  7  8  9        index 0 1 2 stand in slots 0 1 2,
///            [a][b][c]         [d][e][f]            index 3 4 5 in slots 6 7 8; slot 9 is spare
///                     ^gap              ^end
///
/// Taking an entry out opens the gap there, or moves it there first, which costs the distance.
/// Entries that are taken out one after the other, from the front, from the back or anywhere
/// between in either direction, cost the same however many there are; so does appending. The order
/// is that of a plain array, and an index is found by one comparison.
///
/// The list does not count references. Out of memory: std::bad_alloc, and the list is as it was.
class OSG_SYSTEM_API PointerList
{
  public:
    PointerList() = default;
    PointerList(PointerList const &) = delete;
    PointerList &operator=(PointerList const &) = delete;
    ~PointerList()
    {
        if(isBlock() || isSparse())
            clear();
    }
    void swap(PointerList &other) noexcept;

    UInt32 size() const
    {
        if(isBlock())
            return block()->size;
        return isSparse() ? sparseSize() : (_bits != 0 ? 1 : 0);
    }
    bool empty() const { return size() == 0; }
    /// `index` is below size().
    FieldContainer *operator[](UInt32 index) const
    {
        if(isBlock())
            return cells()[slotOf(index)];
        if((_bits & NullEntry) != 0)
            return sparseAt(index);
        return reinterpret_cast<FieldContainer *>(_bits);
    }
    /// Allocates nothing, save in a list that putAt() has filled.
    void set(UInt32 index, FieldContainer *value);
    /// As set(), for any index: a list that is too short grows by nulls. As long as it has no more
    /// than MostSparse entries, and was filled by this function alone, nulls take no room,
    /// nor does a pointer that stands at another index too.
    void putAt(UInt32 index, FieldContainer *value);
    static constexpr UInt32 MostSparse = 16;

    /// Makes room for `count` entries in all.
    void reserve(UInt32 count);
    void push_back(FieldContainer *value);
    /// Before the entry at `index`, which may be size().
    void insert(UInt32 index, FieldContainer *value);
    void erase(UInt32 index);
    void clear();

    /// Index of the first entry that is `value`, size() where there is none.
    UInt32 find(FieldContainer const *value) const;
    /// Index of any entry that is `value`, size() where there is none. It is looked for in `slot`,
    /// then from the gap outwards, where entries that are taken out one by one are found at once.
    /// The slot of the last entry is getLastSlot(), and entries keep their slots unless the gap
    /// moves over them.
    UInt32 findNear(FieldContainer const *value, UInt32 slot) const;
    /// For a list with entries.
    UInt32 getLastSlot() const { return isBlock() ? slotOf(size() - 1) : 0; }

  private:
    /// What stands before the slots of a block.
    struct Block
    {
        UInt32 size;
        UInt32 capacity;
        UInt32 gapStart; // anywhere while the gap is empty
        UInt32 gapLength;
    };

    /// A block of the entries that are in use. Four bits of `places` for each index, the first in
    /// the lowest, say which entry stands there, from 1; 0 is a null that has none. Indices with
    /// one pointer may have one entry. The list ends behind the last index that has an entry.
    struct Sparse
    {
        UInt64 places;

        FieldContainer **entries() { return reinterpret_cast<FieldContainer **>(this + 1); }
        UInt32 placeOf(UInt32 index) const
        {
            return static_cast<UInt32>(places >> (4 * index)) & MostEntries;
        }
        void setPlace(UInt32 index, UInt32 place)
        {
            places &= ~(UInt64(MostEntries) << (4 * index));
            places |= UInt64(place) << (4 * index);
        }
    };
    static constexpr UInt32 MostEntries = 15;

    // The bits are 0 for an empty list, those of the one entry, the address of a block plus one, or
    // that of a sparse block plus two. Objects and blocks have addresses that four divides, and no
    // block stands at address 0.
    static constexpr std::uintptr_t NullEntry = 2;

    static std::uintptr_t bitsOf(FieldContainer *value)
    {
        return value != nullptr ? reinterpret_cast<std::uintptr_t>(value) : NullEntry;
    }
    bool isBlock() const { return (_bits & 1) != 0; }
    bool isSparse() const { return (_bits & NullEntry) != 0 && _bits != NullEntry; }
    Sparse *sparse() const { return reinterpret_cast<Sparse *>(_bits - NullEntry); }
    UInt32 sparseSize() const;
    UInt32 sparseEntries() const;
    FieldContainer *sparseAt(UInt32 index) const;
    bool putSparse(UInt32 index, FieldContainer *value);
    bool putIntoEntries(UInt32 index, FieldContainer *value);
    bool growSparse(UInt32 index, FieldContainer *value);
    void becomeDense();
    Block *block() const { return reinterpret_cast<Block *>(_bits - 1); }
    FieldContainer **cells() const { return reinterpret_cast<FieldContainer **>(block() + 1); }

    UInt32 slotOf(UInt32 index) const
    {
        return index < block()->gapStart ? index : index + block()->gapLength;
    }
    UInt32 slotsEnd() const { return block()->size + block()->gapLength; }
    void moveGapTo(UInt32 index);
    void closeGap();
    void makeRoom();
    void moveToBlock(UInt32 capacity);

    std::uintptr_t _bits = 0;
};

/// Walks what stands at the indices of a list, from begin to end; looks at the list at each step.
template <class List, class Value>
class IndexIterator
{
  public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = Value;
    using difference_type = std::ptrdiff_t;
    using pointer = Value const *;
    using reference = Value;

    IndexIterator() = default;
    IndexIterator(List const &list, UInt32 index)
        : _list(&list)
        , _index(index)
    {
    }
    Value operator*() const { return (*_list)[_index]; }
    IndexIterator &operator++()
    {
        ++_index;
        return *this;
    }
    IndexIterator operator++(int) { return IndexIterator(*_list, _index++); }
    bool operator==(IndexIterator const &other) const { return _index == other._index; }

  private:
    List const *_list = nullptr;
    UInt32 _index = 0;
};

} // namespace OSG
