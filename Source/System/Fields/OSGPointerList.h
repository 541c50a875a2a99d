#pragma once

#include "OSGBaseTypes.h"
#include "OSGSystemApi.h"

namespace OSG
{
class FieldContainer;

/// The pointers of a multi pointer field: an array that may have a gap.
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
/// Nothing is counted here. Out of memory: std::bad_alloc, and the list is as it was.
class OSG_SYSTEM_API PointerList
{
  public:
    PointerList() = default;
    PointerList(PointerList const &) = delete;
    PointerList &operator=(PointerList const &) = delete;
    ~PointerList();
    void swap(PointerList &other) noexcept;

    UInt32 size() const { return _size; }
    bool empty() const { return _size == 0; }
    /// `index` is below size().
    FieldContainer *operator[](UInt32 index) const { return _slots[slotOf(index)]; }
    void set(UInt32 index, FieldContainer *value) { _slots[slotOf(index)] = value; }

    /// Makes room for `count` entries in all.
    void reserve(UInt32 count);
    void push_back(FieldContainer *value);
    /// Before the entry at `index`, which may be size().
    void insert(UInt32 index, FieldContainer *value);
    void erase(UInt32 index);

    /// Index of the first entry that is `value`, size() where there is none.
    UInt32 find(FieldContainer const *value) const;
    /// Index of any entry that is `value`, size() where there is none. It is looked for in `slot`,
    /// then from the gap outwards, where entries that are taken out one by one are found at once.
    /// `slot` receives the slot in which it stands: that of the last entry is getLastSlot(), and
    /// entries keep their slots unless the gap moves over them.
    UInt32 findNear(FieldContainer const *value, UInt32 &slot) const;
    UInt32 getLastSlot() const { return slotOf(_size - 1); }

  private:
    UInt32 slotOf(UInt32 index) const { return index < _gapStart ? index : index + _gapLength; }
    UInt32 slotsEnd() const { return _size + _gapLength; }
    void moveGapTo(UInt32 index);
    void closeGap();
    void makeRoom();
    void reallocate(UInt32 capacity);

    FieldContainer **_slots = nullptr;
    UInt32 _size = 0;
    UInt32 _capacity = 0;
    UInt32 _gapStart = 0; // anywhere while the gap is empty
    UInt32 _gapLength = 0;
};
} // namespace OSG
