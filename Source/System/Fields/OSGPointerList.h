#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>

#include "OSGMemManager.h"

namespace OSG
{
/// An array of pointers that takes the room of one. Most lists of a scene hold one pointer or none:
/// one stands in the list itself, only more of them (or a single null) take a block of MemMalloc.
///
/// Counts no references. As with a vector, adding moves the pointers; the operations that take
/// memory change nothing when they fail.
template <class T>
class PointerList
{
  public:
    using value_type = T *;
    using const_iterator = T *const *;

    PointerList() = default;
    PointerList(PointerList const &) = delete;
    PointerList &operator=(PointerList const &) = delete;
    PointerList(PointerList &&other) noexcept
        : _single(std::exchange(other._single, nullptr))
    {
    }
    PointerList &operator=(PointerList &&other) noexcept
    {
        swap(other);
        return *this;
    }
    ~PointerList() { clear(); }

    UInt32 size() const { return isBlock() ? block()->size : _single != nullptr; }
    bool empty() const { return size() == 0; }
    UInt32 capacity() const { return isBlock() ? block()->capacity : 1; }
    T *const *data() const { return isBlock() ? block()->values() : &_single; }
    const_iterator begin() const { return data(); }
    const_iterator end() const { return data() + size(); }
    /// `index` is below size().
    T *operator[](UInt32 index) const { return data()[index]; }
    T *front() const { return data()[0]; }
    T *back() const { return data()[size() - 1]; }

    void set(UInt32 index, T *value)
    {
        if(!isBlock() && value != nullptr)
        {
            _single = value;
            return;
        }
        growTo(size());
        block()->values()[index] = value;
    }
    void push_back(T *value) { insert(size(), value); }
    /// Before the entry at `index`, which may be size().
    void insert(UInt32 index, T *value)
    {
        UInt32 const count = size();
        if(count == 0 && value != nullptr && !isBlock())
        {
            _single = value;
            return;
        }
        growTo(count + 1);
        T **const values = block()->values();
        std::copy_backward(values + index, values + count, values + count + 1);
        values[index] = value;
        block()->size = count + 1;
    }
    void erase(UInt32 index)
    {
        if(!isBlock())
        {
            _single = nullptr;
            return;
        }
        T **const values = block()->values();
        std::copy(values + index + 1, values + block()->size, values + index);
        --block()->size;
    }
    void pop_back() { erase(size() - 1); }
    /// New entries are null.
    void resize(UInt32 count)
    {
        UInt32 const old = size();
        if(count == old)
            return;
        if(count == 0)
        {
            clear();
            return;
        }
        growTo(count);
        if(count > old)
            std::fill(block()->values() + old, block()->values() + count, nullptr);
        block()->size = count;
    }
    void reserve(UInt32 count)
    {
        if(count > capacity())
            moveToBlock(count);
    }
    void clear()
    {
        if(isBlock())
            MemFree(block());
        _single = nullptr;
    }
    void swap(PointerList &other) noexcept { std::swap(_single, other._single); }

  private:
    struct Block
    {
        UInt32 size;
        UInt32 capacity;

        T **values() { return reinterpret_cast<T **>(this + 1); }
    };
    static_assert(sizeof(Block) % alignof(T *) == 0);

    // Objects and blocks have even addresses: an odd one is that of a block.
    bool isBlock() const { return (reinterpret_cast<std::uintptr_t>(_single) & 1) != 0; }
    Block *block() const
    {
        return reinterpret_cast<Block *>(reinterpret_cast<std::uintptr_t>(_single) - 1);
    }

    /// Makes room for `count` entries in a block.
    void growTo(UInt32 count)
    {
        constexpr UInt32 Least = 4;
        if(!isBlock())
            moveToBlock(std::max(count, Least));
        else if(count > block()->capacity)
            moveToBlock(std::max(count, 2 * block()->capacity));
    }

    void moveToBlock(UInt32 capacity)
    {
        UInt32 const count = size();
        auto *const next = static_cast<Block *>(
            MemMallocOrThrow(sizeof(Block) + std::size_t(capacity) * sizeof(T *)));
        next->size = count;
        next->capacity = capacity;
        std::copy(begin(), end(), next->values());
        if(isBlock())
            MemFree(block());
        _single = reinterpret_cast<T *>(reinterpret_cast<std::uintptr_t>(next) + 1);
    }

    T *_single = nullptr;
};
} // namespace OSG
