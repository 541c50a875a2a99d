#pragma once

/// \file
/// Where functions that compute an index array get the property for it.

#include <functional>

#include "OSGTypedGeoProperties.h"

namespace OSG
{
using GeoUInt32Ptr = UnrecordedRefPtr<GeoUInt32Property>;

/// Gives an index of these entries: a new one, or one that has them already, so that geometries
/// whose indices are equal may share one. Takes the entries.
using IndexMaker = std::function<GeoUInt32Ptr(MField<UInt32> &&entries)>;

/// Always a new one.
OSG_DRAWABLE_API GeoUInt32Ptr make_index(MField<UInt32> &&entries);
} // namespace OSG
