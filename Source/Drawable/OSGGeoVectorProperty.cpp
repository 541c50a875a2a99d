#include "OSGGeoVectorProperty.h"

namespace OSG
{
GeoVectorProperty::~GeoVectorProperty() = default;
} // namespace OSG
