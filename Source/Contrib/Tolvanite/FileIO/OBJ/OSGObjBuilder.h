#pragma once

/// \file
/// Makes the scene of an OBJ file from its records: the only part of the reader that makes nodes.

#include <vector>

#include "OSGNode.h"
#include "OSGObjArrayPool.h"
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
    /// Geometries share arrays that are equal, and the material of those that have none.
    ///
    /// To be called once. Uses the records up as it goes, and commits the thread's changes now and
    /// then where there are very many meshes, so that no second list as long as the scene is held.
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
    void addPrimitives(Geometry &geometry, ObjFaces const &faces);
    void addFaces(Geometry &geometry, ObjFaces const &faces, ObjIndexMask const &mask);
    /// For meshes that no material was assigned to.
    Material *defaultMaterial();

    UnrecordedRefPtr<GeoPnt3fProperty> _positions;
    UnrecordedRefPtr<GeoVec2fProperty> _texCoords;
    UnrecordedRefPtr<GeoVec3fProperty> _normals;
    UnrecordedRefPtr<SimpleTexturedMaterial> _defaultMaterial;
    ObjArrayPool<GeoUInt8Property> _types;
    ObjArrayPool<GeoUInt32Property> _lengths;
    ObjArrayPool<GeoUInt32Property> _indices;
    ObjArrayPool<GeoUInt32Property> _normalIndices;
};
} // namespace OSG
