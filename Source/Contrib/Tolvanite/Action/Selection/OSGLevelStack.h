#pragma once

/// \file
/// A stack for walks: its first levels need no memory of their own.

#include <array>
#include <cstddef>
#include <vector>

#include "OSGMemManager.h"

namespace OSG
{
/// A stack of values whose first `Fixed` levels stand in the object itself. Deeper levels are on
/// the heap. top() and pop() of an empty stack are undefined.
template <class T, std::size_t Fixed>
class LevelStack
{
  public:
    bool empty() const { return _size == 0; }
    std::size_t size() const { return _size; }
    T const &top() const { return _size <= Fixed ? _first[_size - 1] : _more.back(); }

    /// `value` may be an element of the stack.
    void push(T const &value)
    {
        if(_size < Fixed)
            _first[_size] = value;
        else
            _more.push_back(value);
        ++_size;
    }
    void pop()
    {
        if(_size > Fixed)
            _more.pop_back();
        --_size;
    }
    /// Takes all elements off and keeps the memory.
    void clear()
    {
        _more.clear();
        _size = 0;
    }
    /// Takes all elements off and frees the memory beyond the first levels.
    void release()
    {
        _size = 0;
        if(_more.capacity() != 0)
            std::vector<T, MemAllocator<T>>().swap(_more);
    }

  private:
    std::size_t _size = 0;
    std::array<T, Fixed> _first{};
    std::vector<T, MemAllocator<T>> _more;
};
} // namespace OSG
