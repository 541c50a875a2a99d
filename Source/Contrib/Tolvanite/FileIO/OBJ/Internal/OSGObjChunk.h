#pragma once

/// \file
/// Faces of an OBJ file as they are kept until the geometries are made.

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <vector>

#include "OSGContribTolvaniteApi.h"
#include "OSGObjPackedNumbers.h"

namespace OSG
{
/// The kinds of indices of a corner, in the order of "7/2/5".
enum ObjIndexKind : UInt32
{
    ObjPositionIndex = 0,
    ObjTexCoordIndex = 1,
    ObjNormalIndex = 2,
    ObjIndexKindCount = 3
};

/// One corner of a face: its zero-based indices by kind, -1 where there is none. Indices are kept
/// whether or not their elements exist, so any value may occur. All negative values mean that there
/// is no index.
struct ObjTiePoint
{
    Int32 index[ObjIndexKindCount] = {-1, -1, -1};

    bool operator==(ObjTiePoint const &other) const
    {
        return std::equal(std::begin(index), std::end(index), std::begin(other.index));
    }
};

using ObjTiePointVector = std::vector<ObjTiePoint, MemAllocator<ObjTiePoint>>;
using ObjNumberVector = std::vector<Int32, MemAllocator<Int32>>;

/// Corners as they are collected: the indices of each kind in an array of their own. Corners beyond
/// `count` are room. A kind that no corner has had so far has no indices; all stand for -1.
struct OSG_CONTRIBTOLVANITE_API ObjOpenCorners
{
    std::array<MemArray<Int32>, ObjIndexKindCount> indices;
    std::array<bool, ObjIndexKindCount> isThere = {};
    std::size_t count = 0;

    void add(ObjTiePoint const &corner)
    {
        if(count == indices[0].size())
            grow(1);
        for(UInt32 kind = 0; kind < ObjIndexKindCount; ++kind)
        {
            if(!isThere[kind])
                begin(kind);
            indices[kind][count] = corner.index[kind];
        }
        ++count;
    }
    /// Adds the indices of corners, by kind; null for a kind that they do not have.
    void add(Int32 const *const (&more)[ObjIndexKindCount], std::size_t corners);
    /// Takes all corners away.
    void clear();
    /// Makes room for more corners, for the first thousands at once.
    void grow(std::size_t corners);

  private:
    void begin(UInt32 kind);
};

/// Where the numbers of chunks lie.
struct ObjChunkRoom
{
    ObjByteStack sizes;
    ObjByteStack indices[ObjIndexKindCount];
};

/// Some thousand corners of whole faces, in the order of the file, packed. Texture coordinates and
/// normals with the same indices as the positions take no memory.
class OSG_CONTRIBTOLVANITE_API ObjChunk
{
  public:
    /// Takes the sizes of the faces and their corners. What it packs lies in `room`.
    ObjChunk(std::span<Int32 const> sizes, ObjOpenCorners const &corners, ObjChunkRoom &room);

    std::size_t faceCount() const { return _faceCount; }
    std::size_t cornerCount() const { return _cornerCount; }

    /// Whether all faces have one size, and which.
    bool hasOneSize() const { return _sizes.width() == 0; }
    Int32 leastSize() const { return _sizes.least(); }
    /// Writes the sizes of the faces from `face` on.
    void unpackSizes(std::size_t face, std::span<Int32> to) const { _sizes.unpack(face, to); }

    /// The least and the greatest index of all corners.
    Int32 least(ObjIndexKind kind) const { return source(kind).least(); }
    Int32 greatest(ObjIndexKind kind) const { return source(kind).greatest(); }
    /// Whether all corners have the index of their position.
    bool equalsPositions(ObjIndexKind kind) const { return _equalsPositions[kind]; }
    /// Writes the indices of the corners from `corner` on.
    void unpack(ObjIndexKind kind, std::size_t corner, std::span<Int32> to) const
    {
        source(kind).unpack(corner, to);
    }
    /// Gives the room of a kind back, with that of newer chunks. Positions also stand for the kinds
    /// that equal them, so they are released last.
    void release(ObjIndexKind kind, ObjChunkRoom &room)
    {
        _indices[kind].release(room.indices[kind]);
    }
    /// Gives all room back, with that of newer chunks.
    void release(ObjChunkRoom &room);

  private:
    ObjPackedNumbers const &source(ObjIndexKind kind) const
    {
        return _indices[_equalsPositions[kind] ? ObjPositionIndex : kind];
    }

    std::size_t _faceCount;
    std::size_t _cornerCount;
    ObjPackedNumbers _sizes;
    ObjPackedNumbers _indices[ObjIndexKindCount];
    bool _equalsPositions[ObjIndexKindCount];
};
} // namespace OSG
