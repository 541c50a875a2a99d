#pragma once

#include <algorithm>
#include <vector>

#include "OSGMemArray.h"

namespace OSG
{
/// Values that are added one after the other, when nobody knows how many there will be. They lie in
/// blocks and are never copied as they become more. At the end they move into an array that has
/// room for exactly as many; the blocks are freed on the way.
template <class T>
class ObjValueList
{
  public:
    /// A block has room for a thirty-second of the values before it, within these limits. Large
    /// blocks may lie in large pages of the system.
    static constexpr std::size_t SmallestBlock = 64;
    static constexpr std::size_t LargestBlock = (std::size_t(4) << 20) / sizeof(T);

    std::size_t size() const { return _before + static_cast<std::size_t>(_next - begin()); }

    /// A new value, not set.
    T &add()
    {
        if(_next == _end)
            addBlock();
        return *_next++;
    }

    /// Appends the values. The list is empty afterwards.
    void moveTo(std::vector<T, MemAllocator<T>> &to)
    {
        to.reserve(to.size() + size());
        for(MemArray<T> &block : _blocks)
        {
            T const *const end = &block == &_blocks.back() ? _next : block.data() + block.size();
            to.insert(to.end(), static_cast<T const *>(block.data()), end);
            block = MemArray<T>();
        }
        *this = ObjValueList();
    }

  private:
    T const *begin() const { return _blocks.empty() ? nullptr : _blocks.back().data(); }
    void addBlock()
    {
        std::size_t const before = size();
        std::size_t const room = std::clamp(before / 32, SmallestBlock, LargestBlock);
        _blocks.emplace_back(room);
        _before = before;
        _next = _blocks.back().data();
        _end = _next + room;
    }

    std::vector<MemArray<T>, MemAllocator<MemArray<T>>> _blocks;
    std::size_t _before = 0; ///< values in all blocks but the last
    T *_next = nullptr;
    T *_end = nullptr;
};
} // namespace OSG
