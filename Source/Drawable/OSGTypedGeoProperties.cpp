#include "OSGTypedGeoProperties.h"

namespace OSG
{
GeoPnt3fProperty::~GeoPnt3fProperty() = default;
GeoVec3fProperty::~GeoVec3fProperty() = default;
GeoVec2fProperty::~GeoVec2fProperty() = default;
GeoColor3fProperty::~GeoColor3fProperty() = default;
GeoUInt32Property::~GeoUInt32Property() = default;
GeoUInt8Property::~GeoUInt8Property() = default;
} // namespace OSG
