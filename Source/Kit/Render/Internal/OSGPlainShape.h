#pragma once

#include <vector>

#include "OSGGeometry.h"

namespace OSG
{
/// Gives the geometry primitives of one type, which follow one another in `points` and are as long
/// as `lengths` says.
void set_primitives(Geometry &geometry, UInt8 type, std::vector<UInt32> const &lengths,
                    std::vector<Pnt3f> const &points);
} // namespace OSG
