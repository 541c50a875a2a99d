#include "OSGObjChunk.h"

#include <algorithm>
#include <cstring>

namespace OSG
{
void ObjOpenCorners::grow()
{
    // A little more than the corners of most chunks.
    constexpr std::size_t FirstRoom = 4096 + 256;
    std::size_t const room = std::max(FirstRoom, 2 * count);
    MemArray<Int32> larger[ObjIndexKindCount];
    for(UInt32 kind = 0; kind < ObjIndexKindCount; ++kind)
    {
        larger[kind] = MemArray<Int32>(room);
        std::copy_n(indices[kind].data(), count, larger[kind].data());
    }
    std::swap(indices, larger);
}

ObjChunk::ObjChunk(std::span<Int32 const> sizes, ObjOpenCorners const &corners)
    : _faceCount(sizes.size())
    , _cornerCount(corners.count)
    , _sizes(sizes)
{
    for(UInt32 kind = 0; kind < ObjIndexKindCount; ++kind)
    {
        MemArray<Int32> const &indices = corners.indices[kind];
        std::size_t const bytes = corners.count * sizeof(Int32);
        _equalsPositions[kind] =
            bytes == 0 || std::memcmp(indices.data(), corners.indices[0].data(), bytes) == 0;
        if(kind == ObjPositionIndex || !_equalsPositions[kind])
            _indices[kind] = ObjPackedNumbers({indices.data(), corners.count});
    }
}
} // namespace OSG
