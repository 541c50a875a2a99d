#include "OSGObjIndexMask.h"

#include <algorithm>
#include <optional>

namespace OSG
{
namespace
{
struct FaceMask
{
    UInt32 mask = 0;
    bool singleIndex = true;
};

FaceMask mask_of(std::span<ObjTiePoint const> face)
{
    FaceMask result;
    for(ObjTiePoint const &tiePoint : face)
    {
        Int32 const position = tiePoint.index[ObjPositionIndex];
        if(position >= 0)
            result.mask |= ObjPositionBit;
        for(UInt32 kind : {ObjTexCoordIndex, ObjNormalIndex})
        {
            if(tiePoint.index[kind] < 0)
                continue;
            result.mask |= 1u << kind;
            result.singleIndex &= tiePoint.index[kind] == position;
        }
    }
    return result;
}

/// Whether all corners of a piece have the index of their position. Mostly the first ones decide.
bool equals_positions(ObjPiece const &piece, ObjIndexKind kind)
{
    if(piece.chunk->equalsPositions(kind))
        return true;
    constexpr std::size_t Few = 64;
    Int32 positions[Few];
    Int32 indices[Few];
    for(std::size_t i = 0; i < piece.cornerCount; i += Few)
    {
        std::size_t const count = std::min(Few, piece.cornerCount - i);
        piece.chunk->unpack(ObjPositionIndex, piece.firstCorner + i, {positions, count});
        piece.chunk->unpack(kind, piece.firstCorner + i, {indices, count});
        if(!std::equal(positions, positions + count, indices))
            return false;
    }
    return true;
}

/// The mask of all faces of a piece, if it is certain that they have one.
std::optional<FaceMask> common_mask(ObjPiece const &piece)
{
    ObjChunk const &chunk = *piece.chunk;
    if(chunk.leastSize() == 0)
        return std::nullopt;
    FaceMask result;
    for(ObjIndexKind kind : {ObjPositionIndex, ObjTexCoordIndex, ObjNormalIndex})
    {
        if(chunk.greatest(kind) < 0)
            continue;
        if(chunk.least(kind) < 0)
            return std::nullopt;
        result.mask |= 1u << kind;
        result.singleIndex = result.singleIndex && equals_positions(piece, kind);
    }
    return result;
}

/// False where the run becomes unusable.
bool add_face(ObjIndexMask &result, FaceMask const &own)
{
    result.singleIndex &= own.singleIndex;
    if(result.mask == 0)
    {
        result.mask = own.mask;
    }
    else if(own.mask != result.mask)
    {
        result.unmatch = (own.mask & ObjPositionBit) == 0;
        result.mask &= own.mask;
    }
    return !result.unmatch;
}

bool add_piece(ObjIndexMask &result, ObjPiece const &piece, ObjPlainFaces &plain)
{
    if(std::optional<FaceMask> const common = common_mask(piece))
    {
        // A second equal face may change the result once more, where the first one left nothing in
        // common. A third one does not.
        return add_face(result, *common) && (piece.faceCount < 2 || add_face(result, *common));
    }
    plain.unpack(piece);
    ObjTiePoint const *behind = plain.corners.data() + plain.corners.size();
    for(std::size_t face = plain.sizes.size(); face-- > 0;)
    {
        std::size_t const size = static_cast<std::size_t>(plain.sizes[face]);
        behind -= size;
        if(!add_face(result, mask_of({behind, size})))
            return false;
    }
    return true;
}
} // namespace

ObjIndexMask derive_index_mask(ObjFaces const &faces)
{
    ObjIndexMask result;
    ObjPlainFaces plain;
    for(ObjPiece piece = faces.newestPiece(); piece.chunk != nullptr;
        piece = faces.pieceBefore(piece))
    {
        if(!add_piece(result, piece, plain))
            break;
    }
    return result;
}
} // namespace OSG
