#include "OSGSharedIndex.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#include "OSGGeometryView.h"
#include "OSGMemArray.h"
#include "OSGTypedGeoProperties.h"

namespace OSG
{
namespace
{
constexpr UInt32 None = VertexChannel::NoElement;

template <class T>
using HeapVector = std::vector<T, MemAllocator<T>>;

/// A vertex array and the elements of it that the geometry's vertices take.
class Array
{
  public:
    Array(Geometry const &geometry, UInt16 slot, UInt32 vertices)
        : _slot(slot)
        , _property(geometry.getProperty(slot))
        , _values(_property->getArray())
    {
        VertexChannel const channel(_property, geometry.getIndex(slot));
        _index = channel.words(vertices);
        if(_index != nullptr)
            return;
        _widened.resize(vertices);
        for(UInt32 vertex = 0; vertex < vertices; ++vertex)
            _widened[vertex] = channel.elementOf(vertex);
        _index = _widened.data();
    }
    Array(Array &&) = default;
    Array(Array const &) = delete; // _index may point into it

    UInt16 slot() const { return _slot; }
    UInt32 size() const { return _values.size(); }
    /// `None` for a vertex whose element is not in the array.
    UInt32 elementOf(UInt32 vertex) const
    {
        UInt32 const element = _index[vertex];
        return element < _values.size() ? element : None;
    }

    /// An array of its own with one element for each of the combinations; zero where there is none.
    template <class Combinations>
    TransitPtr<GeoVectorProperty> gather(Combinations const &combinations) const
    {
        TransitPtr<GeoVectorProperty> gathered = dynamic_transit_cast<GeoVectorProperty>(
            static_cast<FieldContainerType const &>(_property->getType()).createContainer());
        gathered->resize(combinations.size());
        if(_values.dimension() == 3)
            gatherInto<3>(gathered->editArray(), combinations);
        else if(_values.dimension() == 2)
            gatherInto<2>(gathered->editArray(), combinations);
        else
            gatherInto<0>(gathered->editArray(), combinations);
        return gathered;
    }

  private:
    /// Where `Dimension` is not 0, it is known to the compiler. `to` is zero.
    template <UInt32 Dimension, class Combinations>
    void gatherInto(Real32 *to, Combinations const &combinations) const
    {
        UInt32 const dimension = Dimension != 0 ? Dimension : _values.dimension();
        for(UInt32 number = 0; number < combinations.size(); ++number, to += dimension)
        {
            UInt32 const element = elementOf(combinations[number].first);
            if(element != None)
                std::memcpy(to, _values[element], dimension * sizeof(Real32));
        }
    }

    UInt16 _slot;
    GeoVectorProperty *_property;
    VectorArray _values;
    UInt32 const *_index;
    HeapVector<UInt32> _widened; // where the index is not simply an array of words
};

/// The positions first.
std::vector<Array> arrays_of(Geometry const &geometry)
{
    UInt32 const vertices = GeometryView(geometry).vertexCount();
    std::vector<Array> arrays;
    for(UInt16 slot = 0; slot < Geometry::NumSlots; ++slot)
    {
        if(geometry.getProperty(slot) != nullptr)
            arrays.emplace_back(geometry, slot, vertices);
    }
    return arrays;
}

bool has_one_index(Geometry const &geometry)
{
    GeoIntegralProperty *const index = geometry.getIndex(Geometry::PositionsSlot);
    for(UInt16 slot = 0; slot < Geometry::NumSlots; ++slot)
    {
        if(geometry.getProperty(slot) != nullptr && geometry.getIndex(slot) != index)
            return false;
    }
    return true;
}

struct Combination
{
    UInt32 first; ///< vertex that takes it first
    UInt32 next;  ///< number of the next one in its chain
};

/// A list in blocks of one size. It never copies what it has, so it never needs twice its memory.
class CombinationList
{
  public:
    explicit CombinationList(UInt32 most)
        : _shift(std::min<UInt32>(std::bit_width(most), LargestShift))
    {
    }

    UInt32 size() const { return _size; }
    Combination &operator[](UInt32 number)
    {
        return _blocks[number >> _shift][number & ((1u << _shift) - 1)];
    }
    Combination const &operator[](UInt32 number) const
    {
        return _blocks[number >> _shift][number & ((1u << _shift) - 1)];
    }
    void add(Combination const &combination)
    {
        if(_size >> _shift == _blocks.size())
            _blocks.emplace_back(std::size_t(1) << _shift);
        (*this)[_size++] = combination;
    }

  private:
    static constexpr UInt32 LargestShift = 12;

    UInt32 _shift; ///< a block has 2^_shift combinations
    UInt32 _size = 0;
    HeapVector<MemArray<Combination>> _blocks;
};

/// The positions that vertices take.
struct Range
{
    UInt32 first = None;
    UInt32 last = 0;

    UInt64 size() const { return first <= last ? UInt64(last) - first + 1 : 0; }
};

Range range_of(Array const &positions, UInt32 vertices)
{
    Range range;
    for(UInt32 vertex = 0; vertex < vertices; ++vertex)
    {
        UInt32 const element = positions.elementOf(vertex);
        range.first = std::min(range.first, element);
        range.last = std::max(range.last, element == None ? 0 : element);
    }
    return range;
}

/// Numbers the combinations of elements in the order in which vertices first take them.
///
/// Combinations lie in chains, like those of a hash table. At first a chain holds the combinations
/// of one position: vertices that are neighbours in a mesh then use neighbouring memory. That is
/// given up where the positions lie farther apart than the geometry has vertices for, or where many
/// combinations share a position and chains grow long; a chain then holds those of a hash value. So
/// it does in small geometries, whose table is near in any order and has the shorter chains.
class CombinationTable
{
  public:
    CombinationTable(std::vector<Array> const &arrays, UInt32 vertices)
        : _arrays(arrays)
        , _vertices(vertices)
        , _elements(arrays.size())
        , _combinations(vertices)
    {
        Range const range = range_of(arrays.front(), vertices);
        _firstPosition = range.first;
        if(vertices > FewForHash && range.size() / 8 <= vertices)
            _chains.assign(range.size(), None);
        else
            chainByHash();
    }

    CombinationList const &combinations() const { return _combinations; }

    /// Called for the vertices in their order. `None` for a vertex without a position.
    UInt32 numberOf(UInt32 vertex)
    {
        if(_arrays[0].elementOf(vertex) == None)
            return None;
        if(!_byHash && _steps > LongChain * (UInt64(vertex) + FewVertices))
            chainByHash();
        UInt32 &chain = chainOf(vertex);
        for(UInt32 number = chain; number != None;)
        {
            Combination const &combination = _combinations[number];
            ++_steps;
            if(isTakenBy(combination.first))
                return number;
            number = combination.next;
        }
        UInt32 const number = _combinations.size();
        _combinations.add({vertex, chain});
        chain = number;
        return number;
    }

  private:
    /// Looks the vertex's elements up, too.
    UInt32 &chainOf(UInt32 vertex)
    {
        for(std::size_t i = 0; i < _arrays.size(); ++i)
            _elements[i] = _arrays[i].elementOf(vertex);
        return _chains[_byHash ? hash() & (_chains.size() - 1) : _elements[0] - _firstPosition];
    }

    bool isTakenBy(UInt32 vertex) const
    {
        for(std::size_t i = _arrays.size(); i-- > 0;)
        {
            if(_arrays[i].elementOf(vertex) != _elements[i])
                return false;
        }
        return true;
    }

    std::size_t hash() const
    {
        // Multiplicative hashing (Knuth): the upper half of the product depends on all bits.
        UInt64 sum = 0;
        for(UInt32 element : _elements)
            sum = (sum + element) * 0x9E3779B97F4A7C15u;
        return static_cast<std::size_t>(sum >> 32);
    }

    void chainByHash()
    {
        _byHash = true;
        std::size_t chains = 16;
        while(chains < (_vertices > FewForHash ? _vertices : 2 * _vertices))
            chains *= 2;
        _chains.assign(chains, None);
        for(UInt32 number = 0; number < _combinations.size(); ++number)
        {
            UInt32 &chain = chainOf(_combinations[number].first);
            _combinations[number].next = chain;
            chain = number;
        }
    }

    std::vector<Array> const &_arrays;
    UInt32 _vertices;
    // Chains of one position are given up once searches have taken this many steps a vertex. The
    // first few vertices may not decide that.
    static constexpr UInt64 LongChain = 16;
    static constexpr UInt64 FewVertices = 64;
    static constexpr UInt32 FewForHash = 2048;

    bool _byHash = false;
    UInt64 _steps = 0;
    UInt32 _firstPosition = 0;
    std::vector<UInt32> _elements; // of the vertex at hand
    HeapVector<UInt32> _chains;    // number of the newest combination of each
    CombinationList _combinations;
};
} // namespace

Int32 createSharedIndex(Geometry *geometry) { return createSharedIndex(geometry, &make_index); }

Int32 createSharedIndex(Geometry *geometry, IndexMaker const &makeIndex)
{
    if(geometry == nullptr || geometry->getPositions() == nullptr)
        return 0;
    if(has_one_index(*geometry))
        return 0;

    UInt32 const vertices = GeometryView(*geometry).vertexCount();
    std::vector<Array> const arrays = arrays_of(*geometry);
    CombinationTable table(arrays, vertices);
    MField<UInt32> entries(vertices);
    for(UInt32 vertex = 0; vertex < vertices; ++vertex)
        entries[vertex] = table.numberOf(vertex);

    GeoUInt32Ptr const index = makeIndex(std::move(entries));
    for(Array const &array : arrays)
    {
        UnrecordedRefPtr<GeoVectorProperty> const own(array.gather(table.combinations()));
        geometry->setProperty(own, array.slot());
        geometry->setIndex(index, array.slot());
    }
    return static_cast<Int32>(table.combinations().size());
}
} // namespace OSG
