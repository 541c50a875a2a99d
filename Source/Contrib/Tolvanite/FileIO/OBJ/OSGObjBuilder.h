#pragma once

/// \file
/// Makes the scene of an OBJ file from its records: the only part of the reader that makes nodes.

#include <vector>

#include "OSGNode.h"
#include "OSGObjIndexMask.h"
#include "OSGObjRecords.h"
#include "OSGSimpleTexturedMaterial.h"
#include "OSGTypedGeoProperties.h"

namespace OSG
{
class Geometry;

/// The materials that meshes refer to by slot.
using ObjMaterialSlots = std::vector<UnrecordedRefPtr<SimpleTexturedMaterial>,
                                     MemAllocator<UnrecordedRefPtr<SimpleTexturedMaterial>>>;

class OSG_CONTRIBTOLVANITE_API ObjBuilder
{
  public:
    ObjBuilder();

    /// The arrays that a reader fills; they are those of the properties.
    ObjVertexArrays arrays();
    /// Gives back the room that the arrays have kept to grow. To be called once they are full.
    void trimArrays();

    /// A geometry per mesh, newest first. The only mesh of the records is the root itself, several
    /// stand below a Group, those that fail left out. Null where none could be built.
    ///
    /// To be called once. Uses the records up as it goes, and of very many meshes commits the
    /// thread's changes now and then: neither lies beside the whole scene.
    TransitPtr<Node> build(ObjRecords &records, ObjMaterialSlots const &materials);

  private:
    TransitPtr<Node> buildNewest(ObjRecords &records, ObjMaterialSlots const &materials);
    /// Whether other meshes follow that use the arrays. The last one lets them go, so that they are
    /// its own where no other geometry has them.
    enum class Arrays
    {
        Keep,
        LetGo
    };
    TransitPtr<Geometry> buildGeometry(ObjFaces const &faces, Material *material,
                                       Arrays afterwards);
    void addFaces(Geometry &geometry, ObjFaces const &faces, ObjIndexMask const &mask);

    UnrecordedRefPtr<GeoPnt3fProperty> _positions;
    UnrecordedRefPtr<GeoVec2fProperty> _texCoords;
    UnrecordedRefPtr<GeoVec3fProperty> _normals;
};
} // namespace OSG
