#pragma once

#include "OSGDrawMesh.h"
#include "OSGDrawableApi.h"

namespace OSG
{
class Geometry;

/// Replaces `mesh` by what the iterators of `geometry` deliver.
///
/// A mesh vertex is a combination of elements of the geometry's arrays; it stands once in the mesh,
/// in the order of first use. Elements that are missing are zero, a missing colour is black.
/// Colours of three numbers have alpha 1. Texture coordinates are those of slot 8, (s, t, r, q)
/// with r 0 and q 1 where they have fewer numbers.
OSG_DRAWABLE_API void make_mesh(Geometry const &geometry, DrawMesh &mesh);
} // namespace OSG
