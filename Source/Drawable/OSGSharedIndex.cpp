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
        : _shift(std::min<UInt64>(std::bit_width(most), LargestShift))
    {
    }

    UInt32 size() const { return static_cast<UInt32>(_size); }
    Combination &operator[](UInt64 number)
    {
        return _blocks[number >> _shift][number & ((UInt64(1) << _shift) - 1)];
    }
    Combination const &operator[](UInt64 number) const
    {
        return _blocks[number >> _shift][number & ((UInt64(1) << _shift) - 1)];
    }
    void add(Combination const &combination)
    {
        if(_size >> _shift == _blocks.size())
            _blocks.emplace_back(std::size_t(1) << _shift);
        (*this)[_size++] = combination;
    }

    template <class Function>
    void forEach(Function const &function) const
    {
        UInt64 left = _size;
        for(MemArray<Combination> const &block : _blocks)
        {
            UInt64 const count = std::min<UInt64>(left, block.size());
            std::for_each(block.data(), block.data() + count, function);
            left -= count;
        }
    }

  private:
    static constexpr UInt64 LargestShift = 12;

    UInt64 _shift; ///< a block has 2^_shift combinations
    UInt64 _size = 0;
    HeapVector<MemArray<Combination>> _blocks;
};

// Sizes are wider than elements, so that the compiler sees that no element is written over them.

/// The elements of an array that vertices take.
struct ElementLookup
{
    UInt32 const *index;
    UInt64 size;

    /// `None` for a vertex whose element is not in the array.
    UInt32 elementOf(UInt32 vertex) const
    {
        UInt32 const element = index[vertex];
        return element < size ? element : None;
    }
};

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
        _own.resize(vertices);
        for(UInt32 vertex = 0; vertex < vertices; ++vertex)
            _own[vertex] = channel.elementOf(vertex);
        _index = _own.data();
    }
    Array(Geometry const &geometry, VertexElements &&of)
        : _slot(of.slot)
        , _property(geometry.getProperty(of.slot))
        , _values(_property->getArray())
        , _own(std::move(of.elements))
    {
        _index = _own.data();
    }
    Array(Array &&) = default;
    Array(Array const &) = delete; // _index may point into it

    UInt16 slot() const { return _slot; }
    UInt32 size() const { return _values.size(); }
    ElementLookup lookup() const { return {_index, _values.size()}; }

    /// An array of its own with one element for each of the combinations; zero where there is none.
    TransitPtr<GeoVectorProperty> gather(CombinationList const &combinations) const
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

    /// Frees the elements if they are its own. It has none afterwards.
    void dropElements() { _own = HeapVector<UInt32>(); }

  private:
    /// Where `Dimension` is not 0, it is known to the compiler. `to` is zero.
    template <UInt32 Dimension>
    void gatherInto(Real32 *to, CombinationList const &combinations) const
    {
        UInt32 const dimension = Dimension != 0 ? Dimension : _values.dimension();
        ElementLookup const elements = lookup();
        combinations.forEach(
            [&](Combination const &combination)
            {
                UInt32 const element = elements.elementOf(combination.first);
                if(element != None)
                    std::memcpy(to, _values[element], dimension * sizeof(Real32));
                to += dimension;
            });
    }

    UInt16 _slot;
    GeoVectorProperty *_property;
    VectorArray _values;
    UInt32 const *_index;
    HeapVector<UInt32> _own; // where the geometry does not have the index as an array of words
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

/// The positions that vertices take.
struct Range
{
    UInt32 first = None;
    UInt32 last = 0;

    UInt64 size() const { return first <= last ? UInt64(last) - first + 1 : 0; }
};

Range range_of(ElementLookup const &positions, UInt32 vertices)
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
/// `Count` is the number of arrays where the compiler may know it, else 0.
template <std::size_t Count>
class CombinationTable
{
  public:
    CombinationTable(std::vector<Array> const &arrays, UInt32 vertices)
        : _count(arrays.size())
        , _vertices(vertices)
        , _combinations(vertices)
    {
        for(std::size_t i = 0; i < _count; ++i)
            _lookups[i] = arrays[i].lookup();
        Range const range = vertices > FewForHash ? range_of(_lookups[0], vertices) : Range();
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
        Elements const elements = elementsOf(vertex);
        if(elements.of[0] == None)
            return None;
        if(!_byHash && _steps > LongChain * (UInt64(vertex) + FewVertices))
            chainByHash();
        UInt32 &chain = chainOf(elements);
        for(UInt32 number = chain; number != None;)
        {
            Combination const &combination = _combinations[number];
            ++_steps;
            if(isTakenBy(combination.first, elements))
                return number;
            number = combination.next;
        }
        UInt32 const number = _combinations.size();
        _combinations.add({vertex, chain});
        chain = number;
        return number;
    }

  private:
    static constexpr std::size_t MostArrays = Count != 0 ? Count : std::size_t(Geometry::NumSlots);
    /// The elements that a vertex takes, by array.
    struct Elements
    {
        UInt32 of[MostArrays];
    };

    /// Calls the function for the arrays until it returns false. Written out where the compiler
    /// knows the number, so that the elements of a vertex stay in registers.
    template <class Function>
    bool forArrays(Function const &function) const
    {
        bool goesOn = true;
        if constexpr(Count != 0)
        {
            [&]<std::size_t... I>(std::index_sequence<I...>) { goesOn = (function(I) && ...); }
            (std::make_index_sequence<Count>());
        }
        else
        {
            for(std::size_t i = 0; i < _count && goesOn; ++i)
                goesOn = function(i);
        }
        return goesOn;
    }

    Elements elementsOf(UInt32 vertex) const
    {
        Elements elements;
        forArrays(
            [&](std::size_t i)
            {
                elements.of[i] = _lookups[i].elementOf(vertex);
                return true;
            });
        return elements;
    }

    UInt32 &chainOf(Elements const &elements)
    {
        return _chains[_byHash ? hash(elements) & (_chains.size() - 1)
                               : elements.of[0] - _firstPosition];
    }

    bool isTakenBy(UInt32 vertex, Elements const &elements) const
    {
        return forArrays([&](std::size_t i)
                         { return _lookups[i].elementOf(vertex) == elements.of[i]; });
    }

    std::size_t hash(Elements const &elements) const
    {
        // Multiplicative hashing (Knuth): the upper half of the product depends on all bits.
        UInt64 sum = 0;
        forArrays(
            [&](std::size_t i)
            {
                sum = (sum + elements.of[i]) * 0x9E3779B97F4A7C15u;
                return true;
            });
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
            UInt32 &chain = chainOf(elementsOf(_combinations[number].first));
            _combinations[number].next = chain;
            chain = number;
        }
    }

    std::size_t _count;
    UInt32 _vertices;
    // Chains of one position are given up once searches have taken this many steps a vertex. The
    // first few vertices may not decide that.
    static constexpr UInt64 LongChain = 16;
    static constexpr UInt64 FewVertices = 64;
    static constexpr UInt32 FewForHash = 2048;

    bool _byHash = false;
    UInt64 _steps = 0;
    UInt32 _firstPosition = 0;
    ElementLookup _lookups[MostArrays];
    HeapVector<UInt32> _chains; // number of the newest combination of each
    CombinationList _combinations;
};

template <std::size_t Count>
Int32 share_index(Geometry &geometry, UInt32 vertices, std::vector<Array> arrays,
                  IndexMaker const &makeIndex)
{
    CombinationTable<Count> table(arrays, vertices);
    MField<UInt32> entries(vertices);
    for(UInt32 vertex = 0; vertex < vertices; ++vertex)
        entries[vertex] = table.numberOf(vertex);

    GeoUInt32Ptr const index = makeIndex(std::move(entries));
    // From here on only the first vertex of a combination counts, for one array after the other.
    for(Array &array : arrays)
    {
        UnrecordedRefPtr<GeoVectorProperty> const own(array.gather(table.combinations()));
        geometry.setProperty(own, array.slot());
        geometry.setIndex(index, array.slot());
        array.dropElements();
    }
    return static_cast<Int32>(table.combinations().size());
}

Int32 share_index(Geometry &geometry, UInt32 vertices, std::vector<Array> arrays,
                  IndexMaker const &makeIndex)
{
    if(arrays.size() == 2)
        return share_index<2>(geometry, vertices, std::move(arrays), makeIndex);
    if(arrays.size() == 3)
        return share_index<3>(geometry, vertices, std::move(arrays), makeIndex);
    return share_index<0>(geometry, vertices, std::move(arrays), makeIndex);
}
} // namespace

Int32 createSharedIndex(Geometry *geometry) { return createSharedIndex(geometry, &make_index); }

Int32 createSharedIndex(Geometry *geometry, IndexMaker const &makeIndex)
{
    if(geometry == nullptr || geometry->getPositions() == nullptr)
        return 0;
    if(has_one_index(*geometry))
        return 0;
    return share_index(*geometry, GeometryView(*geometry).vertexCount(), arrays_of(*geometry),
                       makeIndex);
}

Int32 createSharedIndex(Geometry &geometry, std::vector<VertexElements> ofSlots,
                        IndexMaker const &makeIndex)
{
    UInt32 const vertices = static_cast<UInt32>(ofSlots.front().elements.size());
    std::vector<Array> arrays;
    arrays.reserve(ofSlots.size());
    for(VertexElements &ofSlot : ofSlots)
        arrays.emplace_back(geometry, std::move(ofSlot));
    return share_index(geometry, vertices, std::move(arrays), makeIndex);
}
} // namespace OSG
