#include "OSGObjChunk.h"

namespace OSG
{
ObjChunk::ObjChunk(std::span<Int32 const> sizes, std::span<ObjTiePoint const> corners)
    : _faceCount(sizes.size())
    , _cornerCount(corners.size())
    , _sizes(sizes)
    , _equalsPositions{true, true, true}
{
    ObjNumberVector indices(corners.size());
    for(UInt32 kind = 0; kind < ObjIndexKindCount; ++kind)
    {
        bool equal = true;
        for(std::size_t i = 0; i < corners.size(); ++i)
        {
            indices[i] = corners[i].index[kind];
            equal &= indices[i] == corners[i].index[ObjPositionIndex];
        }
        _equalsPositions[kind] = equal;
        if(!equal || kind == ObjPositionIndex)
            _indices[kind] = ObjPackedNumbers(indices);
    }
}
} // namespace OSG
