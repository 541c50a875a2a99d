#include "OSGObjChunk.h"

#include <algorithm>

namespace OSG
{
void ObjOpenCorners::grow(std::size_t corners)
{
    // A little more than the corners of most chunks.
    constexpr std::size_t FirstRoom = 4096 + 512;
    std::size_t const room = std::max({FirstRoom, 2 * count, count + corners});
    std::array<MemArray<Int32>, ObjIndexKindCount> larger;
    for(UInt32 kind = 0; kind < ObjIndexKindCount; ++kind)
    {
        larger[kind] = MemArray<Int32>(room);
        if(isThere[kind])
            std::copy_n(indices[kind].data(), count, larger[kind].data());
    }
    std::swap(indices, larger);
}

/// The first corners did not have the kind.
void ObjOpenCorners::begin(UInt32 kind)
{
    std::fill_n(indices[kind].data(), count, -1);
    isThere[kind] = true;
}

void ObjOpenCorners::add(Int32 const *const (&more)[ObjIndexKindCount], std::size_t corners)
{
    if(indices[0].size() - count < corners)
        grow(corners);
    for(UInt32 kind = 0; kind < ObjIndexKindCount; ++kind)
    {
        if(more[kind] != nullptr && !isThere[kind])
            begin(kind);
        if(more[kind] != nullptr)
            std::copy_n(more[kind], corners, indices[kind].data() + count);
        else if(isThere[kind])
            std::fill_n(indices[kind].data() + count, corners, -1);
    }
    count += corners;
}

void ObjOpenCorners::clear()
{
    count = 0;
    isThere.fill(false);
}

ObjChunk::ObjChunk(std::span<Int32 const> sizes, ObjOpenCorners const &corners, ObjChunkRoom &room)
    : _faceCount(sizes.size())
    , _cornerCount(corners.count)
    , _sizes(sizes, room.sizes)
{
    for(UInt32 kind = 0; kind < ObjIndexKindCount; ++kind)
    {
        std::span<Int32 const> const indices(corners.indices[kind].data(), corners.count);
        bool const isThere = corners.isThere[kind];
        _equalsPositions[kind] = isThere && std::equal(indices.begin(), indices.end(),
                                                       corners.indices[ObjPositionIndex].data());
        if(!isThere)
            _indices[kind] = ObjPackedNumbers(-1);
        else if(kind == ObjPositionIndex || !_equalsPositions[kind])
            _indices[kind] = ObjPackedNumbers(indices, room.indices[kind]);
    }
}

void ObjChunk::release(ObjChunkRoom &room)
{
    _sizes.release(room.sizes);
    for(UInt32 kind = 0; kind < ObjIndexKindCount; ++kind)
        _indices[kind].release(room.indices[kind]);
}
} // namespace OSG
