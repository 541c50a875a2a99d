#pragma once

/// \file
/// Makes the scene of an OBJ file from its records. This is the only part of the reader that makes
/// nodes.

#include <vector>

#include "OSGGeoArrayPool.h"
#include "OSGNode.h"
#include "OSGObjIndexMask.h"
#include "OSGObjRecords.h"
#include "OSGSimpleTexturedMaterial.h"
#include "OSGTypedGeoProperties.h"

namespace OSG
{
class Geometry;

/// The materials of meshes, by slot.
using ObjMaterialSlots = std::vector<UnrecordedRefPtr<SimpleTexturedMaterial>,
                                     MemAllocator<UnrecordedRefPtr<SimpleTexturedMaterial>>>;

class OSG_CONTRIBTOLVANITE_API ObjBuilder
{
  public:
    ObjBuilder();

    /// The arrays of the shared properties, which a reader fills.
    ObjVertexArrays arrays();

    /// Makes a geometry for each mesh, in the reverse order of the file. A single mesh becomes the
    /// root. Several meshes become children of a Group. Meshes that fail are left out. Null where
    /// no mesh can be built.
    ///
    /// Geometries share equal arrays. Those without a material share one default material.
    ///
    /// To be called once. Removes the records that it has used. Where there are very many meshes,
    /// it commits the thread's changes from time to time, so that the change list does not become
    /// as long as the scene.
    TransitPtr<Node> build(ObjRecords &records, ObjMaterialSlots const &materials);

  private:
    TransitPtr<Node> buildNewest(ObjRecords &records, ObjMaterialSlots const &materials);
    /// Whether other meshes follow that use the shared arrays. The builder drops its references
    /// with the last mesh, so that a single geometry owns the arrays alone.
    enum class Arrays
    {
        Keep,
        LetGo
    };
    TransitPtr<Geometry> buildGeometry(ObjFaces faces, Material *material, Arrays afterwards);
    void addPrimitives(Geometry &geometry, ObjFaces const &faces);
    void setArrays(Geometry &geometry, ObjIndexMask const &mask);
    void addOneIndex(Geometry &geometry, ObjFaces &faces);
    void addSharedIndex(Geometry &geometry, ObjFaces &faces);
    /// The material of meshes without one.
    Material *defaultMaterial();

    UnrecordedRefPtr<GeoPnt3fProperty> _positions;
    UnrecordedRefPtr<GeoVec2fProperty> _texCoords;
    UnrecordedRefPtr<GeoVec3fProperty> _normals;
    UnrecordedRefPtr<SimpleTexturedMaterial> _defaultMaterial;
    GeoArrayPool<GeoUInt8Property> _types;
    GeoArrayPool<GeoUInt32Property> _lengths;
    GeoArrayPool<GeoUInt32Property> _indices;
    GeoArrayPool<GeoUInt32Property> _normalIndices;
};
} // namespace OSG
