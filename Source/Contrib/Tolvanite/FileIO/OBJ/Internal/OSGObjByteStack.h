#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "OSGMemArray.h"

namespace OSG
{
/// Pieces of bytes that are added one after the other and dropped in the reverse order. They lie in
/// blocks and never move; a block is freed with its first piece.
class ObjByteStack
{
  public:
    /// A block has room for a thirty-second of the bytes before it, within these limits, or for a
    /// larger piece. Large blocks may lie in large pages of the system.
    static constexpr std::size_t SmallestBlock = std::size_t(16) << 10;
    static constexpr std::size_t LargestBlock = std::size_t(4) << 20;

    /// Bytes that are not set, aligned for numbers of 32 bits.
    unsigned char *add(std::size_t bytes)
    {
        bytes = (bytes + Alignment - 1) / Alignment * Alignment;
        if(static_cast<std::size_t>(_end - _next) < bytes)
            addBlock(bytes);
        unsigned char *const piece = _next;
        _next += bytes;
        return piece;
    }

    /// Drops a piece, which has bytes, and all that were added after it.
    void dropFrom(unsigned char *piece)
    {
        while(piece < _blocks.back().data() || piece >= _end)
            dropBlock();
        _next = piece;
        if(piece == _blocks.back().data())
            dropBlock();
    }

  private:
    static constexpr std::size_t Alignment = 4;

    /// What is left of the block before is not used again.
    void dropBlock()
    {
        _before -= _blocks.back().size();
        _blocks.pop_back();
        _end = _blocks.empty() ? nullptr : _blocks.back().data() + _blocks.back().size();
        _next = _end;
    }
    void addBlock(std::size_t bytes)
    {
        std::size_t const room =
            std::max(bytes, std::clamp(_before / 32, SmallestBlock, LargestBlock));
        _blocks.emplace_back(room);
        _before += room;
        _next = _blocks.back().data();
        _end = _next + room;
    }

    std::vector<MemArray<unsigned char>, MemAllocator<MemArray<unsigned char>>> _blocks;
    std::size_t _before = 0; ///< bytes of all blocks
    unsigned char *_next = nullptr;
    unsigned char *_end = nullptr; ///< of the last block
};
} // namespace OSG
