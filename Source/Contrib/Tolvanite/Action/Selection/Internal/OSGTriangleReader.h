#pragma once

/// \file
/// Reads the triangles of an index block by block.

#include "OSGSearchGround.h"
#include "OSGSelectionClipping.h"
#include "OSGTriangleBlock.h"

namespace OSG::SelectionSearch::Indexed
{
using SelectionClipping::ClippedTriangle;
using TriangleGround = Ground<TriangleRule>;

/// Reads and grades the triangles of one block.
class BlockReader
{
  public:
    BlockReader(TriangleGround &ground, UInt32 block, UInt32 state)
        : _begin(block * PrimitiveIndex::BlockSize)
        , _size(ground.index.blockSize(block))
        , _index(ground.index)
    {
        for(UInt32 t = 0; t < _size; ++t)
        {
            Pnt3f corners[3];
            ground.reader.read(primitive(t), corners);
            for(UInt32 c = 0; c < 3; ++c)
                _block.set(t, c, corners[c]);
        }
        grade_block(_block, ground.boxPlanes, state, grades);
    }

    UInt32 primitive(UInt32 t) const { return _index.primitiveAt(_begin + t); }
    /// The triangles that are not outside, as bits.
    UInt32 found() const { return ~grades.outside & ((1u << _size) - 1); }
    bool crosses(UInt32 t) const { return (grades.crossing >> t & 1u) != 0; }
    Pnt3f corner(UInt32 t, UInt32 c) const { return _block.corner(t, c); }
    Real32 distance(UInt32 t, UInt32 c) const { return grades.distance[4 * c + t]; }
    /// Clips a triangle at the planes that change it. The others are those that it is clearly
    /// inside of, and the origin too where a corner may come to lie there.
    void clip(UInt32 t, TriangleGround const &ground, ClippedTriangle &clipped) const
    {
        Pnt3f const corners[3] = {corner(t, 0), corner(t, 1), corner(t, 2)};
        UInt32 const others = crossesOneClearly(t) ? 0 : ground.planesNearOrigin;
        clip_triangle_at_frustum(corners, ground.planes, clipped, unclear(t) | others);
    }
    /// Whether the triangle crosses one plane, and no corner comes near that one or any other. Then
    /// no corner of the clipped triangle lies at the origin.
    bool crossesOneClearly(UInt32 t) const
    {
        UInt32 const planes = unclear(t);
        return (grades.touching >> t & 1u) == 0 && (planes & (planes - 1)) == 0;
    }

    BlockGrades grades;

  private:
    UInt32 unclear(UInt32 t) const
    {
        UInt32 planes = 0;
        for(UInt32 k = 0; k < 6; ++k)
            planes |= (grades.unclear[k] >> t & 1u) << k;
        return planes;
    }

    UInt32 _begin;
    UInt32 _size;
    PrimitiveIndex const &_index;
    TriangleBlock _block;
};

/// Remembers some hundred blocks.
class SeenBlocks
{
  public:
    void add(UInt32 block) { _blocks[block % Size] = block + 1; }
    bool has(UInt32 block) const { return _blocks[block % Size] == block + 1; }

  private:
    static constexpr UInt32 Size = 256;
    UInt32 _blocks[Size] = {};
};
} // namespace OSG::SelectionSearch::Indexed
