#pragma once

#include "OSGGeometry.h"
#include "OSGMatrix.h"
#include "OSGRefCountPtr.h"

namespace OSG
{
/// Which arrays, besides the normals, hold vectors that turn with the geometry.
struct VectorArrays
{
    bool colors;
    bool secondaryColors;
    bool texCoords[4];
};

/// A copy of a geometry, moved by `matrix`. The copy shares the material and owns everything else.
///
///   positions   of 3-float points as points, each divided by its own w (at w = 0 it stays
///               undivided, with a warning)
///   normals     of 3-float vectors as vectors: turned by the upper left 3 by 3 part, not by its
///               inverse transpose, then normalised; a shorter vector than 1e-6 is not normalised
///   colors      of 3 floats, and texture coordinates of 3-float vectors, likewise where `vectors`
///               says so
///
/// Arrays of other types are copied unchanged.
TransitPtr<Geometry> baked_geometry(Geometry const &geometry, Matrix const &matrix,
                                    VectorArrays const &vectors);

/// Moves the arrays of `geometry` itself. After open_arrays_to_bake this needs no memory.
void bake_in_place(Geometry &geometry, Matrix const &matrix, VectorArrays const &vectors);
/// Marks the arrays that bake_in_place will change as edited.
void open_arrays_to_bake(Geometry &geometry, VectorArrays const &vectors);
} // namespace OSG
