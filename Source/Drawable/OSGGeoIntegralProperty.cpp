#include "OSGGeoIntegralProperty.h"

namespace OSG
{
GeoIntegralProperty::~GeoIntegralProperty() = default;
} // namespace OSG
