#pragma once

/// \file
/// Faces of 3DS records whose vertices are not there.

#include <algorithm>
#include <string>

#include "lib3ds.h"

namespace OSG
{
/// Drops the faces that name a vertex beyond those of the mesh. Gives their number.
inline unsigned drop_faces_without_vertices(Lib3dsMesh &mesh)
{
    Lib3dsFace *const end = mesh.faces + mesh.nfaces;
    Lib3dsFace *const kept = std::remove_if(
        mesh.faces, end,
        [&mesh](Lib3dsFace const &face) {
            return std::max({face.index[0], face.index[1], face.index[2]}) >= mesh.nvertices;
        });
    mesh.nfaces = static_cast<unsigned short>(kept - mesh.faces);
    return static_cast<unsigned>(end - kept);
}

/// What the log says of them.
inline std::string dropped_faces_text(std::string const &meshName, unsigned dropped)
{
    return "Mesh '" + meshName +
           "': faces that name vertices that are not there are dropped: " + std::to_string(dropped);
}
} // namespace OSG
