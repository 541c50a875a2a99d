#pragma once

/// \file
/// The normals of triangles.

#include "OSGContribTolvaniteApi.h"
#include "lib3ds.h"

namespace OSG::Lib3ds
{
/// As lib3ds_mesh_calculate_face_normals, for several faces at once.
OSG_CONTRIBTOLVANITE_API void face_normals(Lib3dsMesh const &mesh, float (*normals)[3]);
/// The same to the bit, face by face.
OSG_CONTRIBTOLVANITE_API void face_normals_slowly(Lib3dsMesh const &mesh, float (*normals)[3]);
} // namespace OSG::Lib3ds
