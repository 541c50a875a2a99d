#pragma once

#include "OSGGeometry.h"
#include "OSGMatrix.h"
#include "OSGRefCountPtr.h"

namespace OSG
{
/// Which arrays besides the normals hold vectors that turn with the geometry.
struct VectorArrays
{
    bool colors;
    bool secondaryColors;
    bool texCoords[4];
};

/// A copy of a geometry, its material shared and all else its own, moved by `matrix`:
///
///   positions   of 3-float points as points, each divided by its own w (at w = 0 it stays
///               undivided, with a warning)
///   normals     of 3-float vectors as vectors: turned by the upper left 3 by 3 part, not by its
///               inverse transpose, then normalised; what is shorter than 1e-6 stays as it is
///   colors      of 3 floats, and texture coordinates of 3-float vectors, likewise where `vectors`
///               says so
///
/// Arrays of other types are copied as they are.
TransitPtr<Geometry> baked_geometry(Geometry const &geometry, Matrix const &matrix,
                                    VectorArrays const &vectors);

/// Moves the arrays of `geometry` itself. Where open_arrays_to_bake has been called before, it
/// needs no memory.
void bake_in_place(Geometry &geometry, Matrix const &matrix, VectorArrays const &vectors);
/// Marks the arrays that bake_in_place will change as edited.
void open_arrays_to_bake(Geometry &geometry, VectorArrays const &vectors);
} // namespace OSG
