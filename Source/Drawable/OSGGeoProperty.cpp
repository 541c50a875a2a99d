#include "OSGGeoProperty.h"

namespace OSG
{
GeoProperty::~GeoProperty() = default;
} // namespace OSG
