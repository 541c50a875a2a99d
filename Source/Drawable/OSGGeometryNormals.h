#pragma once

#include "OSGIndexMaker.h"

namespace OSG
{
class Geometry;

/// Gives the geometry smooth normals: at each position index the sum of the unit normals of the
/// triangles that meet there, normalised. Triangles whose edges have a cross product of exactly
/// zero do not count; a position without a usable triangle gets the zero vector. Positions that are
/// equal but have different indices are not smoothed across.
///
/// The normals lie beside the positions and share their index. Only where others hold the positions
/// too and the geometry uses a part of them (geometries of one file share theirs), the normals are
/// its own, with an index of their own, so that memory follows what is used.
OSG_DRAWABLE_API void calcVertexNormals(Geometry *geometry);
/// The same; an index of the geometry's own is the one that `makeIndex` gives.
OSG_DRAWABLE_API void calcVertexNormals(Geometry *geometry, IndexMaker const &makeIndex);
} // namespace OSG
