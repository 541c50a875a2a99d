#include "OSGPlainShape.h"

#include "OSGTypedGeoProperties.h"

namespace OSG
{
void set_primitives(Geometry &geometry, UInt8 type, std::vector<UInt32> const &lengths,
                    std::vector<Pnt3f> const &points)
{
    UnrecordedRefPtr<GeoUInt8Property> const types(GeoUInt8Property::create());
    UnrecordedRefPtr<GeoUInt32Property> const numbers(GeoUInt32Property::create());
    UnrecordedRefPtr<GeoPnt3fProperty> const positions(GeoPnt3fProperty::create());
    types->editValues().assign(lengths.size(), type);
    numbers->editValues().assign(lengths.begin(), lengths.end());
    positions->editValues().assign(points.begin(), points.end());
    geometry.setTypes(types);
    geometry.setLengths(numbers);
    geometry.setPositions(positions);
}
} // namespace OSG
