#include "OSGSharedIndex.h"

#include "OSGGeometryView.h"
#include "OSGTypedGeoProperties.h"

namespace OSG
{
namespace
{
constexpr UInt32 None = VertexChannel::NoElement;

template <class T>
using HeapVector = std::vector<T, MemAllocator<T>>;

struct Array
{
    UInt16 slot;
    GeoVectorProperty *property;
    VertexChannel channel;
};

std::vector<Array> arrays_of(Geometry const &geometry)
{
    std::vector<Array> arrays;
    for(UInt16 slot = 0; slot < Geometry::NumSlots; ++slot)
    {
        GeoVectorProperty *const property = geometry.getProperty(slot);
        if(property != nullptr)
            arrays.push_back({slot, property, VertexChannel(property, geometry.getIndex(slot))});
    }
    return arrays;
}

bool has_one_index(Geometry const &geometry, std::vector<Array> const &arrays)
{
    return std::all_of(
        arrays.begin(), arrays.end(),
        [&](Array const &array)
        { return geometry.getIndex(array.slot) == geometry.getIndex(arrays.front().slot); });
}

/// Numbers combinations of elements in the order in which they first come.
class CombinationTable
{
  public:
    CombinationTable(std::size_t width, UInt32 expected)
        : _width(width)
    {
        std::size_t places = 16;
        while(places < std::size_t(expected) * 2)
            places *= 2;
        _places.assign(places, None);
    }

    UInt32 count() const { return static_cast<UInt32>(_combinations.size() / _width); }
    UInt32 const *operator[](UInt32 number) const { return &_combinations[number * _width]; }

    UInt32 numberOf(UInt32 const *elements)
    {
        std::size_t const wrap = _places.size() - 1;
        std::size_t place = hash(elements) & wrap;
        while(_places[place] != None)
        {
            if(std::equal(elements, elements + _width, (*this)[_places[place]]))
                return _places[place];
            place = (place + 1) & wrap;
        }
        _places[place] = count();
        _combinations.insert(_combinations.end(), elements, elements + _width);
        return _places[place];
    }

  private:
    std::size_t hash(UInt32 const *elements) const
    {
        UInt64 sum = 0;
        for(std::size_t i = 0; i < _width; ++i)
            sum = (sum ^ elements[i]) * 0x9E3779B97F4A7C15u;
        return static_cast<std::size_t>(sum ^ (sum >> 32));
    }

    std::size_t _width;
    HeapVector<UInt32> _combinations; // _width elements each
    HeapVector<UInt32> _places;       // open addressing, at most half full
};

// The combination of a vertex; false where it has no position.
bool combine(std::vector<Array> const &arrays, UInt32 vertex, UInt32 *elements)
{
    for(std::size_t i = 0; i < arrays.size(); ++i)
    {
        UInt32 const element = arrays[i].channel.elementOf(vertex);
        bool const exists = element < arrays[i].channel.size();
        if(!exists && arrays[i].slot == Geometry::PositionsSlot)
            return false;
        elements[i] = exists ? element : None;
    }
    return true;
}

// The elements of one array in the order of the combinations.
TransitPtr<GeoVectorProperty> gather(Array const &array, std::size_t place,
                                     CombinationTable const &combinations)
{
    TransitPtr<GeoVectorProperty> gathered = dynamic_transit_cast<GeoVectorProperty>(
        static_cast<FieldContainerType const &>(array.property->getType()).createContainer());
    gathered->resize(combinations.count());
    for(UInt32 i = 0; i < combinations.count(); ++i)
    {
        UInt32 const element = combinations[i][place];
        if(element != None)
            gathered->setValue(array.channel.values()[element], i);
    }
    return gathered;
}
} // namespace

Int32 createSharedIndex(Geometry *geometry)
{
    if(geometry == nullptr || geometry->getPositions() == nullptr)
        return 0;
    std::vector<Array> const arrays = arrays_of(*geometry);
    if(has_one_index(*geometry, arrays))
        return 0;

    UInt32 const vertices = GeometryView(*geometry).vertexCount();
    CombinationTable combinations(arrays.size(), vertices);
    UnrecordedRefPtr<GeoUInt32Property> const index(GeoUInt32Property::create());
    MField<UInt32> &entries = index->editValues();
    entries.resize(vertices);
    std::vector<UInt32> elements(arrays.size());
    for(UInt32 vertex = 0; vertex < vertices; ++vertex)
        entries[vertex] = combine(arrays, vertex, elements.data())
                              ? combinations.numberOf(elements.data())
                              : None;

    for(std::size_t i = 0; i < arrays.size(); ++i)
    {
        UnrecordedRefPtr<GeoVectorProperty> const own(gather(arrays[i], i, combinations));
        geometry->setProperty(own, arrays[i].slot);
        geometry->setIndex(index, arrays[i].slot);
    }
    return static_cast<Int32>(combinations.count());
}
} // namespace OSG
