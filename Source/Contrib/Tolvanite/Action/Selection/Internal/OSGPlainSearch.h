#pragma once

/// \file
/// The searches of OSGSelectionSearch.h as loops over all primitives.

#include "OSGSelectionSearch.h"

namespace OSG::SelectionSearch::Plain
{
Extremes find_triangles(Geometry const &geometry, Plane const *planes, Plane const &plane);
Extremes find_lines(Geometry const &geometry, Plane const *planes, Plane const &plane);
Extremes find_points(Geometry const &geometry, Plane const *planes, Plane const &plane);
/// Adds to `tested` how many triangles it has looked at.
bool has_triangle(Geometry const &geometry, Plane const *planes, UInt32 &tested);
} // namespace OSG::SelectionSearch::Plain
