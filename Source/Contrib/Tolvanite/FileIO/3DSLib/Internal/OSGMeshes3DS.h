#pragma once

/// \file
/// Makes geometries of the meshes of a 3DS file.

#include <unordered_map>
#include <vector>

#include "OSGChunkMaterial.h"
#include "OSGGeoArrayPool.h"
#include "OSGGeometry.h"
#include "OSGMatrix.h"
#include "OSGMemArray.h"
#include "OSGMemManager.h"
#include "OSGNode.h"
#include "lib3ds.h"

namespace OSG
{
/// A new node with a Group.
UnrecordedRefPtr<Node> make_group_node();

/// The faces of a mesh by material and smoothing group.
class MeshParts3DS
{
  public:
    /// Faces of one material and one smoothing group, in the order of the file.
    struct Part
    {
        Int32 material; ///< -1 for none
        UInt32 smoothing;
        UInt32 begin; ///< in faces()
        UInt32 end;
    };
    template <class T>
    using List = std::vector<T, MemAllocator<T>>;

    explicit MeshParts3DS(Lib3dsMesh const &mesh);

    /// By material, those without one last, then by smoothing group.
    List<Part> const &parts() const { return _parts; }
    /// Numbers of faces, part after part. Empty where one part has all faces, in the file's order.
    List<UInt16> const &faces() const { return _faces; }

  private:
    List<UInt16> partOfEachFace(Lib3dsMesh const &mesh);
    List<UInt16> sortParts();

    List<Part> _parts;
    List<UInt16> _faces;
};

/// Converts the meshes of one file. A mesh may be shown several times, each time at another place.
class Meshes3DS
{
  public:
    using NodePtr = UnrecordedRefPtr<Node>;

    /// Keeps pointers to the meshes.
    explicit Meshes3DS(Lib3dsFile const &file);

    /// Takes note of a mesh that will be converted. Gives the number of nodes that convert() makes
    /// for it.
    UInt64 announce(Lib3dsMesh const *mesh);
    /// Whether an announced mesh has a face of the material.
    bool usesMaterial(UInt32 index) const { return _isUsed[index] != 0; }
    /// Each that is used gets its material before the first mesh is converted.
    void setMaterial(UInt32 index, ChunkMaterial *material) { _materials[index] = material; }
    /// A Group with a Group for each material and one for faces without. Each of these has a
    /// Geometry for each smoothing group. `matrix` takes the vertices to their place; null leaves
    /// them where they are.
    NodePtr convert(Lib3dsMesh *mesh, Matrix const *matrix);

  private:
    class PartBuilder;

    // By the index in the file:
    std::vector<UnrecordedRefPtr<ChunkMaterial>> _materials;
    std::vector<UInt8> _isUsed;
    std::unordered_map<Lib3dsMesh const *, MeshParts3DS> _parts;
    // Room of the builders, for the largest mesh so far. A mesh may be shown very often.
    MemArray<UInt16> _numbers;
    MemArray<UInt16> _used;
    MemArray<UInt16> _lastFaces;
    GeoArrayPool<GeoUInt8Property> _types;
    GeoArrayPool<GeoUInt32Property> _lengths;
};
} // namespace OSG
