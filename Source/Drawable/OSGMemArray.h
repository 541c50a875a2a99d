#pragma once

/// \file
/// An array of plain values in a block of MemMalloc.

#include <type_traits>
#include <utility>

#include "OSGMemManager.h"

namespace OSG
{
/// Values without a constructor, not set at the start. Raises std::bad_alloc.
template <class T>
class MemArray
{
  public:
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

    MemArray() = default;
    explicit MemArray(std::size_t size)
        : _values(MemAllocator<T>().allocate(size))
        , _size(size)
    {
    }
    MemArray(MemArray &&other) noexcept
        : _values(std::exchange(other._values, nullptr))
        , _size(std::exchange(other._size, 0))
    {
    }
    MemArray &operator=(MemArray &&other) noexcept
    {
        std::swap(_values, other._values);
        std::swap(_size, other._size);
        return *this;
    }
    ~MemArray() { MemFree(_values); }

    bool empty() const { return _size == 0; }
    std::size_t size() const { return _size; }
    std::size_t bytes() const { return _size * sizeof(T); }
    T *data() { return _values; }
    T const *data() const { return _values; }
    T &operator[](std::size_t i) { return _values[i]; }
    T const &operator[](std::size_t i) const { return _values[i]; }

  private:
    T *_values = nullptr;
    std::size_t _size = 0;
};
} // namespace OSG
