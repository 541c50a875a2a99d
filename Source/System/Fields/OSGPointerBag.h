#pragma once

/// \file
/// Pointers without an order: any of them is found and taken out at once.

#include <cstdint>

#include "OSGPointerList.h"

namespace OSG
{
class FieldContainer;

/// A set of containers that takes the room of one pointer: nearly all of those in a scene hold one
/// or none. Up to `Linear` entries stand in an array; more come with a table of their places, found
/// by their address, so that an entry of a million is taken out as quickly as one of three.
///
/// The bag does not count references. Out of memory: std::bad_alloc, and the bag is as it was.
class OSG_SYSTEM_API PointerBag
{
  public:
    PointerBag() = default;
    PointerBag(PointerBag const &) = delete;
    PointerBag &operator=(PointerBag const &) = delete;
    ~PointerBag();

    UInt32 size() const { return isBlock() ? block()->size : (_bits != 0 ? 1 : 0); }
    bool empty() const { return size() == 0; }
    /// `index` is below size(). An entry keeps its index until another one is taken out.
    FieldContainer *operator[](UInt32 index) const
    {
        return isBlock() ? entries()[index] : reinterpret_cast<FieldContainer *>(_bits);
    }
    bool contains(FieldContainer const *entry) const { return find(entry) < size(); }

    /// `entry` is not null and not in here yet.
    void insert(FieldContainer *entry);
    /// The last entry takes its index. False where it is not in here.
    bool erase(FieldContainer const *entry);

  private:
    static constexpr UInt32 Linear = 8;
    static constexpr UInt32 NoEntry = ~UInt32(0);

    /// What stands before the entries of a block; the table stands behind them.
    struct Block
    {
        UInt32 size;
        UInt32 capacity; // a power of two
    };

    // The bits are 0 for an empty bag, those of the one entry, or odd: the address of a block plus
    // one.
    bool isBlock() const { return (_bits & 1) != 0; }
    Block *block() const { return reinterpret_cast<Block *>(_bits - 1); }
    FieldContainer **entries() const { return reinterpret_cast<FieldContainer **>(block() + 1); }
    bool hasTable() const { return block()->capacity > Linear; }
    /// Indices of entries by their hash, with linear probing; twice as many places as entries.
    UInt32 *table() const { return reinterpret_cast<UInt32 *>(entries() + block()->capacity); }
    UInt32 tableMask() const { return 2 * block()->capacity - 1; }
    UInt32 homeOf(FieldContainer const *entry) const;
    UInt32 placeOf(FieldContainer const *entry) const;
    void enterTable(UInt32 index);
    void leaveTable(UInt32 place);

    UInt32 find(FieldContainer const *entry) const;
    void grow();

    std::uintptr_t _bits = 0;
};

/// A PointerBag for one class of containers.
template <class T>
class PointerBagOf
{
  public:
    using const_iterator = IndexIterator<PointerBagOf, T *>;

    UInt32 size() const { return _bag.size(); }
    bool empty() const { return _bag.empty(); }
    T *operator[](UInt32 index) const { return static_cast<T *>(_bag[index]); }
    const_iterator begin() const { return const_iterator(*this, 0); }
    const_iterator end() const { return const_iterator(*this, size()); }

    bool contains(T const *entry) const { return _bag.contains(entry); }
    void insert(T *entry) { _bag.insert(entry); }
    bool erase(T const *entry) { return _bag.erase(entry); }

  private:
    PointerBag _bag;
};
} // namespace OSG
