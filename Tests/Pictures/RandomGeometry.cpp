#include "RandomGeometry.h"

#include <limits>

namespace OSG::Test
{
namespace
{
constexpr UInt32 MaxPrimitives = 2;
constexpr UInt32 OutOfRange = 1000000;

enum class Indexing
{
    None,
    Shared,
    Separate
};

// Fewer than eight corners, now and then one too few for the type.
UInt32 length_of(RandomNumbers &random, UInt32 type)
{
    switch(type)
    {
    case TrianglesPrimitive:
    {
        UInt32 const triangles = 1 + random.below(2);
        return 3 * triangles + random.below(2);
    }
    case QuadsPrimitive:
    case QuadStripPrimitive:
        return 4 + random.below(4);
    default:
        return 2 + random.below(5);
    }
}

std::vector<UInt32> numbers(RandomNumbers &random, UInt32 count, UInt32 below)
{
    std::vector<UInt32> result(count);
    for(UInt32 &number : result)
        number = random.below(below);
    return result;
}

class GeometryMaker
{
  public:
    GeometryMaker(RandomNumbers &random, bool strokes)
        : _random(random)
        , _indexing(static_cast<Indexing>(random.below(3)))
    {
        for(UInt32 i = 0; i < 1 + random.below(MaxPrimitives); ++i)
        {
            UInt32 const type =
                strokes && random.below(6) == 0 ? random.below(4) : 4 + random.below(6);
            _types.push_back(type);
            _lengths.push_back(length_of(random, type));
            _vertices += _lengths.back();
        }
    }

    GeometryPtr make()
    {
        GeometryPtr geometry = make_geometry({_types, _lengths, positions()});
        setIndex(*geometry, Geometry::PositionsSlot, geometry->getPositions()->size(), true);
        if(_random.below(5) != 0)
            add<GeoVec3fProperty>(*geometry, Geometry::NormalsSlot);
        if(_random.below(2) == 0)
            addColors(*geometry);
        // Materials with a picture need them: without coordinates the picture is not drawn.
        if(_random.below(8) == 0)
            add<GeoVec3fProperty>(*geometry, Geometry::TexCoordsSlot);
        else
            add<GeoVec2fProperty>(*geometry, Geometry::TexCoordsSlot);
        return geometry;
    }

  private:
    UInt32 elements()
    {
        return _indexing == Indexing::None
                   ? _vertices
                   : (_indexing == Indexing::Shared ? _shared : 3 + _random.below(9));
    }

    std::vector<Pnt3f> positions()
    {
        _shared = 4 + _random.below(_vertices);
        std::vector<Pnt3f> result(elements());
        for(Pnt3f &position : result)
            position = _random.point(-1, 1);
        if(_random.below(6) == 0)
            result[_random.below(static_cast<UInt32>(result.size()))][_random.below(3)] =
                std::numeric_limits<Real32>::quiet_NaN();
        return result;
    }

    template <class Property>
    void add(Geometry &geometry, UInt16 slot)
    {
        UnrecordedRefPtr<Property> const property(Property::create());
        UInt32 const count = elements();
        property->resize(count);
        for(UInt32 i = 0; i < count; ++i)
        {
            Vec3f const value = _random.vector();
            property->setValue(value.values(), i);
        }
        geometry.setProperty(property, slot);
        setIndex(geometry, slot, count, false);
    }

    void addColors(Geometry &geometry)
    {
        UnrecordedRefPtr<GeoColor3fProperty> const property(GeoColor3fProperty::create());
        UInt32 const count = elements();
        for(UInt32 i = 0; i < count; ++i)
        {
            Pnt3f const color = _random.point(0, 1);
            property->editValues().push_back(Color3f(color[0], color[1], color[2]));
        }
        geometry.setColors(property);
        setIndex(geometry, Geometry::ColorsSlot, count, false);
    }

    void setIndex(Geometry &geometry, UInt16 slot, UInt32 count, bool mayBeOut)
    {
        if(_indexing == Indexing::None)
            return;
        if(_indexing == Indexing::Shared && slot != Geometry::PositionsSlot)
        {
            geometry.setIndex(geometry.getIndex(Geometry::PositionsSlot), slot);
            return;
        }
        std::vector<UInt32> index = numbers(_random, _vertices, count);
        if(mayBeOut && _random.below(6) == 0)
            index[_random.below(_vertices)] = OutOfRange;
        geometry.setIndex(make_property<GeoUInt32Property>(index), slot);
    }

    RandomNumbers &_random;
    Indexing _indexing;
    UInt32 _vertices = 0;
    UInt32 _shared = 0; // elements of each array where one index serves all
    std::vector<UInt32> _types;
    std::vector<UInt32> _lengths;
};
} // namespace

GeometryPtr random_geometry(RandomNumbers &random, bool strokes)
{
    return GeometryMaker(random, strokes).make();
}
} // namespace OSG::Test
