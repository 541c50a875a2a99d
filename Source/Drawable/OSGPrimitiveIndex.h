#pragma once

/// \file
/// A tree of boxes over the triangles, lines or points of one geometry.
///
/// Eight boxes stand below each box. The lowest boxes are blocks of BlockSize primitives. The tree
/// is implicit: child i of node n on one level is node 8 n + i of the level below, and the children
/// of level 0 are the blocks.

#include "OSGBoxNode.h"
#include "OSGMemArray.h"
#include "OSGPartCursor.h"

namespace OSG
{
/// Kinds of primitives that an index serves.
enum class IndexedKind : UInt8
{
    Triangles,
    Lines,
    Points
};

/// Good for one state of the geometry's arrays; PrimitiveIndexUse hands out only indices that are.
/// It never changes, so any number of threads may read it.
///
/// Primitives are named by their running numbers, as the iterators count. The index keeps no
/// positions: PartReader reads them from the geometry.
class OSG_DRAWABLE_API PrimitiveIndex : public MemObject
{
  public:
    static constexpr UInt32 BlockSize = 4;
    static constexpr UInt32 MaxLevels = 11;

    /// How primitives come to stand in the tree, where neighbours in space stand side by side.
    enum class Order : UInt8
    {
        Runs,  ///< each block holds up to four primitives that follow one another in the geometry
        Sorted ///< each primitive has a place of its own; 3 bytes more per primitive
    };

    IndexedKind getKind() const { return _kind; }
    Order getOrder() const { return _isInRuns ? Order::Runs : Order::Sorted; }
    /// Number of primitives.
    UInt32 size() const { return _size; }
    /// Bytes that the index holds, in all.
    UInt64 getBytes() const;

    // --- the tree ---
    /// 0 where no primitive stands in the tree.
    UInt32 levelCount() const { return _levels; }
    BoxNode const *level(UInt32 level) const { return _nodes.data() + _levelStart[level]; }
    /// How many nodes the level has.
    UInt32 nodeCount(UInt32 level) const { return _levelStart[level + 1] - _levelStart[level]; }
    /// The children of a node as bits.
    UInt32 childrenOf(UInt32 level, UInt32 node) const
    {
        UInt32 const below = level == 0 ? _blocks : nodeCount(level - 1);
        UInt32 const left = below - node * BoxNode::Width;
        return left >= BoxNode::Width ? 0xFFu : (1u << left) - 1;
    }
    /// Number of primitives in a block.
    UInt32 blockSize(UInt32 block) const
    {
        if(_isInRuns)
            return _order[block] % BlockSize + 1;
        UInt32 const left = _inTree - block * BlockSize;
        return left < BlockSize ? left : BlockSize;
    }

    /// The largest absolute coordinates of the primitives in the tree.
    Pnt3f const &getLargest() const { return _largest; }

    // --- places; the blockSize(b) places of block b begin at b * BlockSize ---
    UInt32 primitiveAt(UInt32 place) const
    {
        return _isInRuns ? _order[place / BlockSize] / BlockSize + place % BlockSize
                         : _order[place];
    }
    /// Places from here to size() stand in no block: their primitives have a coordinate that is not
    /// finite, or so large that sums of it might not be. Every search tests them.
    UInt32 untamedBegin() const { return _inTree; }

    /// Every how many primitives the place of one is noted, where it cannot be computed.
    static constexpr UInt32 NotedPlaces = 16;
    struct NotedPlace
    {
        UInt64 start;
        UInt32 primitive;
        UInt32 part;
    };
    /// Null where the vertices of primitive i begin at i times the corners of a primitive. Points
    /// then all belong to primitive 0.
    NotedPlace const *getNotedPlaces() const { return _noted.empty() ? nullptr : _noted.data(); }

  private:
    template <class Rule>
    friend class PrimitiveIndexBuilder;

    PrimitiveIndex() = default;

    IndexedKind _kind = IndexedKind::Triangles;
    UInt32 _size = 0;
    UInt32 _inTree = 0;
    UInt32 _blocks = 0;
    UInt32 _levels = 0;
    UInt32 _levelStart[MaxLevels + 1] = {};
    Pnt3f _largest;
    MemArray<BoxNode> _nodes;
    bool _isInRuns = false;
    // The first primitive of each run times BlockSize, plus its size less one; or primitives.
    MemArray<UInt32> _order;
    MemArray<NotedPlace> _noted;
};

/// Reads primitives of an index by their running numbers. One per search; it moves.
template <class Rule>
class PartReader
{
  public:
    static constexpr int Corners = Rule::Corners;

    PartReader(PrimitiveIndex const &index, Geometry const &geometry)
        : _noted(index.getNotedPlaces())
        , _cursor(geometry)
    {
        VertexChannel const &positions = _cursor.getView().positions;
        if(_noted != nullptr || positions.values().dimension() != 3)
            return;
        _words = positions.words(0);
        if(_words != nullptr || !positions.isIndexed())
            _values = positions.values()[0];
    }

    /// The corners of primitive `i`.
    void read(UInt32 i, Pnt3f (&corners)[Corners])
    {
        if(_values == nullptr)
        {
            readAnyhow(i, corners);
            return;
        }
        for(UInt32 c = 0; c < Corners; ++c)
        {
            UInt64 const vertex = UInt64(i) * Corners + c;
            UInt64 const element = _words != nullptr ? _words[vertex] : vertex;
            Real32 const *const numbers = _values + element * 3;
            corners[c] = Pnt3f(numbers[0], numbers[1], numbers[2]);
        }
    }

    /// Running number of a corner's vertex in the geometry's sequence.
    UInt64 vertexOf(UInt32 i, int corner)
    {
        return _noted == nullptr ? UInt64(i) * Corners + static_cast<UInt32>(corner)
                                 : seek(i).getVertex(corner);
    }
    /// The geometry's primitive that a point belongs to, and its first vertex. For points only.
    UInt32 primitiveOf(UInt32 i) { return _noted == nullptr ? 0 : seek(i).getPrimitive(); }
    UInt64 firstVertexOf(UInt32 i) { return _noted == nullptr ? 0 : seek(i).getFirstVertex(); }

  private:
    void readAnyhow(UInt32 i, Pnt3f (&corners)[Corners])
    {
        VertexChannel const &positions = _cursor.getView().positions;
        for(int c = 0; c < Corners; ++c)
            corners[c] = _noted == nullptr ? positions.point(positions.elementOf(vertexOf(i, c)))
                                           : seek(i).getPosition(c);
    }

    PartCursor<Rule> const &seek(UInt32 i)
    {
        constexpr UInt32 Step = PrimitiveIndex::NotedPlaces;
        UInt32 const at = _cursor.getIndex();
        if(i < at || i - at > Step)
        {
            PrimitiveIndex::NotedPlace const &place = _noted[i / Step];
            _cursor.moveTo({place.start, place.primitive, place.part}, i / Step * Step);
        }
        while(_cursor.getIndex() < i)
            _cursor.next();
        return _cursor;
    }

    PrimitiveIndex::NotedPlace const *_noted;
    PartCursor<Rule> _cursor;
    Real32 const *_values = nullptr;
    UInt32 const *_words = nullptr;
};

/// Builds the index of one kind of a geometry's primitives. Null where there are none, or where so
/// many are untamed that a tree would not help. Raises std::bad_alloc. While it is built it needs
/// at most as much memory again as the index itself.
///
/// Runs are chosen where primitives that follow one another lie near one another, as nearly all
/// files have them; `isSorted` leaves them no choice.
OSG_DRAWABLE_API PrimitiveIndex *build_primitive_index(Geometry const &geometry, IndexedKind kind,
                                                       bool isSorted = false);
} // namespace OSG
