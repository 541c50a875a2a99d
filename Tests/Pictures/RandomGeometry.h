#pragma once

#include "GeometryBuilders.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
/// Primitives of several types within the box from -1 to 1: without an index, with one for all
/// arrays, or with one for each. Normals, colours and texture coordinates may be there; a corner
/// may not be finite, an index may be out of range. Where `strokes` is false, neither lines nor
/// points are among them.
GeometryPtr random_geometry(RandomNumbers &random, bool strokes);
} // namespace OSG::Test
