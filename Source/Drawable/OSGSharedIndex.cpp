#include "OSGSharedIndex.h"

#include <utility>

#include "OSGGeometryView.h"
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

    /// An array of its own with one element for each of the vertices; zero where there is none.
    template <class Vertices>
    TransitPtr<GeoVectorProperty> gather(Vertices const &vertices) const
    {
        TransitPtr<GeoVectorProperty> gathered = dynamic_transit_cast<GeoVectorProperty>(
            static_cast<FieldContainerType const &>(_property->getType()).createContainer());
        gathered->resize(static_cast<UInt32>(vertices.size()));
        UInt32 const dimension = _values.dimension();
        Real32 *to = gathered->editArray();
        for(auto const &vertex : vertices)
        {
            UInt32 const element = elementOf(vertex.first);
            for(UInt32 i = 0; element != None && i < dimension; ++i)
                to[i] = _values[element][i];
            to += dimension;
        }
        return gathered;
    }

  private:
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

/// Numbers the combinations of elements in the order in which vertices first take them.
///
/// Combinations lie in chains, like those of a hash table. At first a chain holds the combinations
/// of one position: vertices that are neighbours in a mesh then use neighbouring memory. That is
/// given up where the array has many more positions than the geometry has vertices, or where many
/// combinations share a position and chains grow long; a chain then holds those of a hash value.
class CombinationTable
{
  public:
    struct Combination
    {
        UInt32 first; ///< vertex that takes it first
        UInt32 next;  ///< number of the next one in its chain
    };

    CombinationTable(std::vector<Array> const &arrays, UInt32 vertices)
        : _arrays(arrays)
        , _vertices(vertices)
        , _elements(arrays.size())
    {
        _combinations.reserve(vertices);
        if(arrays.front().size() / 8 <= vertices)
            _chains.assign(arrays.front().size(), None);
        else
            chainByHash();
    }

    HeapVector<Combination> const &combinations() const { return _combinations; }

    /// Called for the vertices in their order. `None` for a vertex without a position.
    UInt32 numberOf(UInt32 vertex)
    {
        if(_arrays[0].elementOf(vertex) == None)
            return None;
        if(!_byHash && _steps > LongChain * (UInt64(vertex) + FewVertices))
            chainByHash();
        UInt32 &chain = chainOf(vertex);
        for(UInt32 number = chain; number != None; number = _combinations[number].next)
        {
            ++_steps;
            if(isTakenBy(_combinations[number].first))
                return number;
        }
        UInt32 const number = static_cast<UInt32>(_combinations.size());
        _combinations.push_back({vertex, chain});
        chain = number;
        return number;
    }

  private:
    /// Looks the vertex's elements up, too.
    UInt32 &chainOf(UInt32 vertex)
    {
        for(std::size_t i = 0; i < _arrays.size(); ++i)
            _elements[i] = _arrays[i].elementOf(vertex);
        return _chains[_byHash ? hash() & (_chains.size() - 1) : _elements[0]];
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
        UInt64 sum = 0;
        for(UInt32 element : _elements)
        {
            sum = (sum ^ element) * 0x9E3779B97F4A7C15u;
            sum ^= sum >> 32;
        }
        return static_cast<std::size_t>(sum);
    }

    void chainByHash()
    {
        _byHash = true;
        std::size_t chains = 16;
        while(chains < _vertices)
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

    bool _byHash = false;
    UInt64 _steps = 0;
    std::vector<UInt32> _elements; // of the vertex at hand
    HeapVector<UInt32> _chains;    // number of the newest combination of each
    HeapVector<Combination> _combinations;
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
