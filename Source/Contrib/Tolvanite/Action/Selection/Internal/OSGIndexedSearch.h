#pragma once

/// \file
/// The searches of OSGSelectionSearch.h through an index. The results have the same bits as those
/// of the plain loops.

#include "OSGPrimitiveIndex.h"
#include "OSGSelectionSearch.h"

namespace OSG::SelectionSearch::Indexed
{
/// Whether the boxes of an index can be tested against the planes and the reference plane: all
/// numbers are finite, and no normal is much longer than 1.
bool can_search(Plane const *planes, Plane const &plane);

Extremes find_triangles(PrimitiveIndex const &index, Geometry const &geometry, Plane const *planes,
                        Plane const &plane);
Extremes find_lines(PrimitiveIndex const &index, Geometry const &geometry, Plane const *planes,
                    Plane const &plane);
Extremes find_points(PrimitiveIndex const &index, Geometry const &geometry, Plane const *planes,
                     Plane const &plane);
bool has_triangle(PrimitiveIndex const &index, Geometry const &geometry, Plane const *planes);
} // namespace OSG::SelectionSearch::Indexed
