#include <algorithm>
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

using Lanes = Real32 __attribute__((vector_size(16)));

Lanes smaller(Lanes a, Lanes b) { return a < b ? a : b; }
Lanes larger(Lanes a, Lanes b) { return a > b ? a : b; }

/// A box as it is kept.
struct Bounds
{
    Real32 low[3];
    Real32 high[3];
};

/// A box as it is computed, three numbers side by side.
struct Box
{
    Lanes low = {};
    Lanes high = {};

    Box() = default;
    explicit Box(Bounds const &bounds)
        : low{bounds.low[0], bounds.low[1], bounds.low[2], 0.f}
        , high{bounds.high[0], bounds.high[1], bounds.high[2], 0.f}
    {
    }
    /// The corners of a primitive. `isTame` becomes false where one of them is not.
    template <std::size_t Corners>
    Box(Pnt3f const (&corners)[Corners], bool &isTame)
    {
        constexpr Real32 Most = LargestTame;
        Lanes const first = {corners[0][0], corners[0][1], corners[0][2], 0.f};
        low = first;
        high = first;
        auto tame = (first <= Most) & (first >= -Most); // NaN is not
        for(std::size_t c = 1; c < Corners; ++c)
        {
            Lanes const corner = {corners[c][0], corners[c][1], corners[c][2], 0.f};
            tame &= (corner <= Most) & (corner >= -Most);
            low = smaller(low, corner);
            high = larger(high, corner);
        }
        isTame = (tame[0] & tame[1] & tame[2]) != 0;
    }

    /// The box of both.
    Box with(Box const &other) const
    {
        Box both;
        both.low = smaller(low, other.low);
        both.high = larger(high, other.high);
        return both;
    }
    Bounds getBounds() const { return {{low[0], low[1], low[2]}, {high[0], high[1], high[2]}}; }
    Pnt3f getLow() const { return Pnt3f(low[0], low[1], low[2]); }
    Pnt3f getHigh() const { return Pnt3f(high[0], high[1], high[2]); }
    Pnt3f getMiddle() const
    {
        Lanes const middle = (low + high) * 0.5f;
        return Pnt3f(middle[0], middle[1], middle[2]);
    }
    /// The sum of the lengths of three edges.
    Real32 size() const
    {
        Lanes const extent = high - low;
        return extent[0] + extent[1] + extent[2];
    }
};
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

    PrimitiveIndex *build(bool isSorted)
    {
        count();
        Runs runs(_index->_size / FewestInRun + 1);
        bool const inRuns = findRuns(runs) && !isSorted;
        if(!inRuns)
            runs.release();
        if(_tame == 0 || _index->_size - _tame > _index->_size / UntamedShare)
            return nullptr;
        _index->_inTree = _tame;
        _index->_isInRuns = inRuns;
        for(UInt32 axis = 0; axis < 3; ++axis)
            _index->_largest[axis] = std::max(std::abs(_box.low[axis]), std::abs(_box.high[axis]));
        if(inRuns)
            sortRuns(runs);
        else
            sort();
        makeRoom(inRuns ? runs.count : (_tame + BlockSize - 1) / BlockSize);
        if(inRuns)
            fillBlocksByRuns(runs);
        else
            fillBlocks();
        runs.release();
        for(UInt32 level = 1; level < _index->_levels; ++level)
            fillLevel(level);
        return _index.release();
    }

  private:
    static constexpr UInt32 BlockSize = PrimitiveIndex::BlockSize;
    // Where runs hold fewer on average, sorting the primitives takes hardly more memory.
    static constexpr UInt32 FewestInRun = 3;
    // Of a primitive in a run, whose number shares 32 bits with the size of the run.
    static constexpr UInt32 LargestNumber = ~UInt32(0) / BlockSize;

    struct Runs
    {
        explicit Runs(UInt32 capacity)
            : boxes(capacity)
            , places(capacity)
        {
        }
        void release()
        {
            boxes = MemArray<Bounds>();
            places = MemArray<UInt32>();
        }

        MemArray<Bounds> boxes;
        MemArray<UInt32> places; // as the index has them
        MemArray<UInt32> order;
        UInt32 count = 0;
    };

    // --- numbers and places of primitives ---

    void count()
    {
        if(countList())
            return;
        UInt32 size = 0;
        for(PartCursor<Rule> cursor(_geometry); !cursor.atEnd(); cursor.next())
            ++size;
        constexpr UInt32 Step = PrimitiveIndex::NotedPlaces;
        _index->_size = size;
        _index->_noted = MemArray<PrimitiveIndex::NotedPlace>((size + Step - 1) / Step);
        for(PartCursor<Rule> cursor(_geometry); !cursor.atEnd(); cursor.next())
            if(cursor.getIndex() % Step == 0)
                _index->_noted[cursor.getIndex() / Step] = {
                    cursor.getPlace().start, cursor.getPlace().primitive, cursor.getPlace().part};
    }

    // The usual case: no primitive shares a vertex with its neighbour, and all positions exist.
    // The vertices of a primitive then follow from its number.
    bool countList()
    {
        PrimitiveView const view(_geometry);
        if(Rule::Corners == 1 && view.primitiveCount() != 1)
            return false;
        UInt64 vertices = 0;
        for(UInt32 i = 0; i < view.primitiveCount(); ++i)
        {
            if(!isList(view.type(i), view.length(i)))
                return false;
            vertices += view.length(i);
        }
        if(vertices > view.vertexCount())
            return false;
        UInt32 const used = static_cast<UInt32>(vertices);
        if(view.positions.isIndexed())
        {
            UInt32 const *const words = view.positions.words(used);
            if(words == nullptr)
                return false;
            UInt32 highest = 0;
            for(UInt32 i = 0; i < used; ++i)
                highest = std::max(highest, words[i]);
            if(used > 0 && highest >= view.positions.size())
                return false;
        }
        _index->_size = used / Rule::Corners;
        return true;
    }

    static bool isList(UInt32 type, UInt32 length)
    {
        UInt32 const count = Rule::count(type, length, length);
        if(UInt64(count) * Rule::Corners != length)
            return false;
        if(count == 0)
            return true;
        UInt32 vertex[Rule::Corners];
        Rule::corners(type, length, count - 1, vertex);
        for(UInt32 c = 0; c < Rule::Corners; ++c)
            if(vertex[c] != length - Rule::Corners + c)
                return false;
        return true;
    }

    // --- order ---

    // Divides the primitives into runs that are little larger than what they hold, and finds the
    // box of all tame ones. False where there are untamed ones, or where runs would be short.
    bool findRuns(Runs &runs)
    {
        PartReader<Rule> reader(*_index, _geometry);
        bool areGood = _index->_size <= LargestNumber;
        UInt32 inRun = 0;
        Box run;
        for(UInt32 i = 0; i < _index->_size; ++i)
        {
            bool isTame = true;
            Box const own = boxOf(reader, i, isTame);
            if(!isTame)
            {
                areGood = false;
                continue;
            }
            Box const both = run.with(own);
            ++_tame;
            if(inRun > 0 && inRun < BlockSize && both.size() <= 2 * (run.size() + own.size()))
            {
                run = both;
                ++inRun;
                continue;
            }
            areGood = closeRun(runs, run, i - inRun, inRun) && areGood;
            run = own;
            inRun = 1;
        }
        return closeRun(runs, run, _index->_size - inRun, inRun) && areGood;
    }

    // False where there is no room for so many runs.
    bool closeRun(Runs &runs, Box const &box, UInt32 first, UInt32 size)
    {
        if(size == 0)
            return true;
        _box = _hasBox ? _box.with(box) : box;
        _hasBox = true;
        if(runs.count >= runs.boxes.size())
            return false;
        runs.boxes[runs.count] = box.getBounds();
        runs.places[runs.count++] = first * BlockSize + size - 1;
        return true;
    }

    void sortRuns(Runs &runs)
    {
        SpaceOrder order(runs.count, _box.getLow(), _box.getHigh());
        for(UInt32 i = 0; i < runs.count; ++i)
            order.add(i, Box(runs.boxes[i]).getMiddle());
        runs.order = order.finish();
    }

    void sort()
    {
        SpaceOrder order(_tame, _box.getLow(), _box.getHigh());
        PartReader<Rule> reader(*_index, _geometry);
        UInt32 const size = _index->_size;
        for(UInt32 i = 0; i < size; ++i)
        {
            bool isTame = true;
            Box const box = boxOf(reader, i, isTame);
            if(isTame)
                order.add(i, box.getMiddle());
        }
        _index->_order = order.finish(size);
        UInt32 untamed = _tame;
        for(UInt32 i = 0; i < size && untamed < size; ++i)
        {
            bool isTame = true;
            boxOf(reader, i, isTame);
            if(!isTame)
                _index->_order[untamed++] = i;
        }
    }

    static Box boxOf(PartReader<Rule> &reader, UInt32 i, bool &isTame)
    {
        Pnt3f corners[Rule::Corners];
        reader.read(i, corners);
        return Box(corners, isTame);
    }

    // --- tree ---

    void makeRoom(UInt32 blocks)
    {
        constexpr UInt32 Width = BoxNode::Width;
        UInt32 below = blocks;
        _index->_blocks = blocks;
        UInt32 nodes = 0;
        do
        {
            below = (below + Width - 1) / Width;
            _index->_levelStart[_index->_levels++] = nodes;
            nodes += below;
        } while(below > 1);
        _index->_levelStart[_index->_levels] = nodes;
        _index->_nodes = MemArray<BoxNode>(nodes);
    }

    void fillBlocksByRuns(Runs &runs)
    {
        BoxNode *const nodes = _index->_nodes.data();
        for(UInt32 block = 0; block < runs.count; ++block)
        {
            UInt32 &entry = runs.order[block];
            UInt32 const place = runs.places[entry];
            UInt32 const first = place / BlockSize;
            put(nodes, block, Box(runs.boxes[entry]), first, first + place % BlockSize);
            entry = place;
        }
        clearRest(nodes, runs.count);
        _index->_order = std::move(runs.order);
    }

    void fillBlocks()
    {
        PartReader<Rule> reader(*_index, _geometry);
        BoxNode *const nodes = _index->_nodes.data();
        for(UInt32 block = 0; block < _index->_blocks; ++block)
        {
            UInt32 const at = block * BlockSize;
            UInt32 first = _index->primitiveAt(at);
            UInt32 last = first;
            bool isTame = true; // they all are
            Box box = boxOf(reader, first, isTame);
            for(UInt32 place = at + 1; place < at + _index->blockSize(block); ++place)
            {
                UInt32 const i = _index->primitiveAt(place);
                box = box.with(boxOf(reader, i, isTame));
                first = std::min(first, i);
                last = std::max(last, i);
            }
            put(nodes, block, box, first, last);
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
            Box box = boxOf(node, 0);
            UInt32 first = node.first[0];
            UInt32 last = node.last[0];
            for(UInt32 child = 1; child < BoxNode::Width && (children >> child & 1u) != 0; ++child)
            {
                box = box.with(boxOf(node, child));
                first = std::min(first, node.first[child]);
                last = std::max(last, node.last[child]);
            }
            put(nodes, i, box, first, last);
        }
        clearRest(nodes, count);
    }

    static Box boxOf(BoxNode const &node, UInt32 child)
    {
        Real32 const(&b)[6][BoxNode::Width] = node.bound;
        return Box(Bounds{{b[0][child], b[1][child], b[2][child]},
                          {b[3][child], b[4][child], b[5][child]}});
    }
    static void put(BoxNode *nodes, UInt32 i, Box const &box, UInt32 first, UInt32 last)
    {
        BoxNode &node = nodes[i / BoxNode::Width];
        UInt32 const child = i % BoxNode::Width;
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
            put(nodes, i, Box(), 0, 0);
    }

    Geometry const &_geometry;
    std::unique_ptr<PrimitiveIndex> _index;
    UInt32 _tame = 0;
    Box _box; // of all tame primitives
    bool _hasBox = false;
};

PrimitiveIndex *build_primitive_index(Geometry const &geometry, IndexedKind kind, bool isSorted)
{
    switch(kind)
    {
    case IndexedKind::Triangles:
        return PrimitiveIndexBuilder<TriangleRule>(geometry, kind).build(isSorted);
    case IndexedKind::Lines:
        return PrimitiveIndexBuilder<LineRule>(geometry, kind).build(isSorted);
    default:
        return PrimitiveIndexBuilder<PointRule>(geometry, kind).build(isSorted);
    }
}
} // namespace OSG
