#include <cmath>
#include <memory>

#include "OSGPrimitiveIndex.h"
#include "OSGSpaceOrder.h"

namespace OSG
{
namespace
{
// Sums of a few products of such numbers with components of unit vectors are finite.
constexpr Real32 LargestTame = 1e18f;
// An index with more untamed primitives than one in this many is not worth its memory.
constexpr UInt32 UntamedShare = 8;

struct Box
{
    Real32 low[3];
    Real32 high[3];

    void start(Pnt3f const &point)
    {
        for(UInt32 axis = 0; axis < 3; ++axis)
            low[axis] = high[axis] = point[axis];
    }
    void add(Pnt3f const &point)
    {
        for(UInt32 axis = 0; axis < 3; ++axis)
        {
            low[axis] = point[axis] < low[axis] ? point[axis] : low[axis];
            high[axis] = point[axis] > high[axis] ? point[axis] : high[axis];
        }
    }
    Pnt3f getLow() const { return Pnt3f(low[0], low[1], low[2]); }
    Pnt3f getHigh() const { return Pnt3f(high[0], high[1], high[2]); }
};

template <std::size_t Corners>
bool is_tame(Pnt3f const (&corners)[Corners])
{
    for(Pnt3f const &corner : corners)
        for(UInt32 axis = 0; axis < 3; ++axis)
            if(!(std::abs(corner[axis]) <= LargestTame)) // NaN is not
                return false;
    return true;
}

template <std::size_t Corners>
Pnt3f middle(Pnt3f const (&corners)[Corners])
{
    Vec3f sum = corners[0].subZero();
    for(std::size_t c = 1; c < Corners; ++c)
        sum += corners[c].subZero();
    return Pnt3f() + sum * (1.f / Corners);
}
} // namespace

template <class Rule>
class PrimitiveIndexBuilder
{
  public:
    PrimitiveIndexBuilder(Geometry const &geometry, IndexedKind kind)
        : _geometry(geometry)
        , _index(new PrimitiveIndex)
    {
        _index->_kind = kind;
    }

    PrimitiveIndex *build(PrimitiveIndex::Order order)
    {
        survey();
        UInt32 const untamed = _index->_size - _tame;
        bool const inFileOrder = order == PrimitiveIndex::Order::File;
        if(_tame == 0 || untamed > _index->_size / UntamedShare || (inFileOrder && untamed > 0))
            return nullptr;
        _index->_inTree = _tame;
        for(UInt32 axis = 0; axis < 3; ++axis)
            _index->_largest[axis] = std::max(std::abs(_box.low[axis]), std::abs(_box.high[axis]));
        if(!inFileOrder)
            sort();
        buildTree();
        return _index.release();
    }

  private:
    using Corner = Pnt3f[Rule::Corners];

    // Counts the primitives, notes places and finds the box of the tame ones.
    void survey()
    {
        UInt32 const places = countNotedPlaces();
        _index->_noted = places > 0 ? MemArray<PrimitiveIndex::NotedPlace>(places)
                                    : MemArray<PrimitiveIndex::NotedPlace>();
        for(PartCursor<Rule> cursor(_geometry); !cursor.atEnd(); cursor.next())
        {
            UInt32 const i = _index->_size++;
            if(places > 0 && i % PrimitiveIndex::NotedPlaces == 0)
                _index->_noted[i / PrimitiveIndex::NotedPlaces] = {
                    cursor.getPlace().start, cursor.getPlace().primitive, cursor.getPlace().part};
            Corner corners;
            for(int c = 0; c < Rule::Corners; ++c)
                corners[c] = cursor.getPosition(c);
            if(!is_tame(corners))
                continue;
            if(_tame++ == 0)
                _box.start(corners[0]);
            for(Pnt3f const &corner : corners)
                _box.add(corner);
        }
    }

    // 0 where the vertices of a primitive follow from its number.
    UInt32 countNotedPlaces() const
    {
        PartCursor<Rule> cursor(_geometry);
        bool follows = Rule::Corners > 1 || cursor.getView().primitiveCount() == 1;
        UInt32 count = 0;
        for(; !cursor.atEnd(); cursor.next(), ++count)
            for(int c = 0; c < Rule::Corners && follows; ++c)
                follows =
                    cursor.getVertex(c) == UInt64(count) * Rule::Corners + static_cast<UInt32>(c);
        return follows ? 0
                       : (count + PrimitiveIndex::NotedPlaces - 1) / PrimitiveIndex::NotedPlaces;
    }

    void sort()
    {
        SpaceOrder order(_tame, _box.getLow(), _box.getHigh());
        PartReader<Rule> reader(*_index, _geometry);
        UInt32 const size = _index->_size;
        for(UInt32 i = 0; i < size; ++i)
        {
            Corner corners;
            reader.read(i, corners);
            if(is_tame(corners))
                order.add(i, middle(corners));
        }
        MemArray<UInt32> sorted(size);
        order.finish(sorted.data());
        UInt32 untamed = _tame;
        for(UInt32 i = 0; i < size && untamed < size; ++i)
        {
            Corner corners;
            reader.read(i, corners);
            if(!is_tame(corners))
                sorted[untamed++] = i;
        }
        _index->_order = std::move(sorted);
    }

    void buildTree()
    {
        constexpr UInt32 Width = BoxNode::Width;
        UInt32 below =
            (_index->_inTree + PrimitiveIndex::BlockSize - 1) / PrimitiveIndex::BlockSize;
        _index->_blocks = below;
        UInt32 nodes = 0;
        do
        {
            below = (below + Width - 1) / Width;
            _index->_levelStart[_index->_levels++] = nodes;
            nodes += below;
        } while(below > 1);
        _index->_levelStart[_index->_levels] = nodes;
        _index->_nodes = MemArray<BoxNode>(nodes);
        fillBlocks();
        for(UInt32 level = 1; level < _index->_levels; ++level)
            fillLevel(level);
    }

    void fillBlocks()
    {
        PartReader<Rule> reader(*_index, _geometry);
        BoxNode *const nodes = _index->_nodes.data();
        for(UInt32 block = 0; block < _index->_blocks; ++block)
        {
            UInt32 const at = block * PrimitiveIndex::BlockSize;
            Box box;
            UInt32 first = ~UInt32(0);
            UInt32 last = 0;
            for(UInt32 place = at; place < at + _index->blockSize(block); ++place)
            {
                UInt32 const i = _index->primitiveAt(place);
                Corner corners;
                reader.read(i, corners);
                if(place == at)
                    box.start(corners[0]);
                for(Pnt3f const &corner : corners)
                    box.add(corner);
                first = std::min(first, i);
                last = std::max(last, i);
            }
            put(nodes[block / BoxNode::Width], block % BoxNode::Width, box, first, last);
        }
        clearRest(nodes, _index->_blocks);
    }

    void fillLevel(UInt32 level)
    {
        BoxNode *const nodes = _index->_nodes.data() + _index->_levelStart[level];
        BoxNode const *const below = _index->level(level - 1);
        UInt32 const count = _index->nodeCount(level - 1);
        for(UInt32 i = 0; i < count; ++i)
        {
            BoxNode const &node = below[i];
            UInt32 const children = _index->childrenOf(level - 1, i);
            Box box;
            UInt32 first = node.first[0];
            UInt32 last = node.last[0];
            box.start(corner(node, 0, 0));
            for(UInt32 child = 0; child < BoxNode::Width && (children >> child & 1u) != 0; ++child)
            {
                box.add(corner(node, child, 0));
                box.add(corner(node, child, 3));
                first = std::min(first, node.first[child]);
                last = std::max(last, node.last[child]);
            }
            put(nodes[i / BoxNode::Width], i % BoxNode::Width, box, first, last);
        }
        clearRest(nodes, count);
    }

    static Pnt3f corner(BoxNode const &node, UInt32 child, UInt32 row)
    {
        return Pnt3f(node.bound[row][child], node.bound[row + 1][child],
                     node.bound[row + 2][child]);
    }
    static void put(BoxNode &node, UInt32 child, Box const &box, UInt32 first, UInt32 last)
    {
        for(UInt32 axis = 0; axis < 3; ++axis)
        {
            node.bound[axis][child] = box.low[axis];
            node.bound[axis + 3][child] = box.high[axis];
        }
        node.first[child] = first;
        node.last[child] = last;
    }
    // The places of the last node that have no box.
    static void clearRest(BoxNode *nodes, UInt32 count)
    {
        for(UInt32 i = count; i % BoxNode::Width != 0; ++i)
            put(nodes[i / BoxNode::Width], i % BoxNode::Width, {}, 0, 0);
    }

    Geometry const &_geometry;
    std::unique_ptr<PrimitiveIndex> _index;
    UInt32 _tame = 0;
    Box _box = {};
};

PrimitiveIndex *build_primitive_index(Geometry const &geometry, IndexedKind kind,
                                      PrimitiveIndex::Order order)
{
    switch(kind)
    {
    case IndexedKind::Triangles:
        return PrimitiveIndexBuilder<TriangleRule>(geometry, kind).build(order);
    case IndexedKind::Lines:
        return PrimitiveIndexBuilder<LineRule>(geometry, kind).build(order);
    default:
        return PrimitiveIndexBuilder<PointRule>(geometry, kind).build(order);
    }
}
} // namespace OSG
