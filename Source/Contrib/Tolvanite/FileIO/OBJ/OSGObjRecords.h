#pragma once

/// \file
/// The data that a read of an OBJ file collects before nodes are made: corners (tie points), faces,
/// and material runs (meshes).

#include <cstddef>
#include <span>
#include <vector>

#include "OSGContribTolvaniteApi.h"
#include "OSGMemManager.h"
#include "OSGVector.h"

namespace OSG
{
/// The kinds of indices of a corner, in the order of "7/2/5".
enum ObjIndexKind : UInt32
{
    ObjPositionIndex = 0,
    ObjTexCoordIndex = 1,
    ObjNormalIndex = 2,
    ObjIndexKindCount = 3
};

/// One corner of a face: its zero-based indices by kind, -1 where there is none. Indices are kept
/// whether or not their elements exist, so any value may occur. All negative values mean that there
/// is no index.
struct ObjTiePoint
{
    Int32 index[ObjIndexKindCount] = {-1, -1, -1};

    bool operator==(ObjTiePoint const &) const = default;
};

/// The arrays that vertices are appended to. Not owned: they belong to the properties that the
/// geometries share.
struct ObjVertexArrays
{
    std::vector<Pnt3f, MemAllocator<Pnt3f>> &positions;
    std::vector<Vec2f, MemAllocator<Vec2f>> &texCoords;
    std::vector<Vec3f, MemAllocator<Vec3f>> &normals;
};

/// The faces of a material run, newest first: for(std::span<ObjTiePoint const> face : faces). The
/// corners of a face are in the order of its line.
class ObjFaces
{
  public:
    class Iterator
    {
      public:
        Iterator(UInt32 const *behindSize, ObjTiePoint const *behindFace)
            : _behindSize(behindSize)
            , _behindFace(behindFace)
        {
        }
        std::span<ObjTiePoint const> operator*() const
        {
            return {_behindFace - _behindSize[-1], _behindSize[-1]};
        }
        Iterator &operator++()
        {
            _behindFace -= *--_behindSize;
            return *this;
        }
        bool operator==(Iterator const &other) const { return _behindSize == other._behindSize; }

      private:
        UInt32 const *_behindSize;
        ObjTiePoint const *_behindFace;
    };

    /// Takes the sizes and corners of the faces in the order of the file. Not owned.
    ObjFaces(std::span<UInt32 const> sizes, std::span<ObjTiePoint const> tiePoints)
        : _sizes(sizes)
        , _tiePoints(tiePoints)
    {
    }

    Iterator begin() const
    {
        return {_sizes.data() + _sizes.size(), _tiePoints.data() + _tiePoints.size()};
    }
    Iterator end() const { return {_sizes.data(), _tiePoints.data()}; }

    bool empty() const { return _sizes.empty(); }
    std::size_t size() const { return _sizes.size(); }
    /// Number of corners of all faces.
    std::size_t tiePointCount() const { return _tiePoints.size(); }

  private:
    std::span<UInt32 const> _sizes;
    std::span<ObjTiePoint const> _tiePoints;
};

/// Faces and material runs (meshes) of a file, in flat arrays in the order of the file. A corner
/// takes 12 bytes, a face 4 and a mesh 24. While a file is read, there is always a mesh for the
/// next face.
class OSG_CONTRIBTOLVANITE_API ObjRecords
{
  public:
    static constexpr Int32 NoMaterial = -1;

    ObjRecords();

    // --- collecting ---
    void addTiePoint(ObjTiePoint const &tiePoint) { _tiePoints.push_back(tiePoint); }
    /// Makes a face of the corners that were added since the last face. It may be empty.
    void endFace();
    /// Starts another mesh, unless the current mesh has no face.
    void startMesh();
    /// Sets the material slot of the current mesh. The caller decides what slots mean.
    void setMaterial(Int32 slot) { _meshes.back().material = slot; }

    // --- reading; mesh 0 is the last one in the file ---
    std::size_t meshCount() const { return _meshes.size(); }
    ObjFaces faces(std::size_t mesh) const;
    Int32 material(std::size_t mesh) const { return stored(mesh).material; }

    // --- removing ---
    /// Removes mesh 0, so that the numbers of all others decrease by one. Frees memory from time to
    /// time. There must be a mesh. Nothing may be added afterwards.
    void dropNewestMesh();

  private:
    struct Mesh
    {
        std::size_t firstFace = 0;
        std::size_t firstTiePoint = 0;
        Int32 material = NoMaterial;
    };

    Mesh const &stored(std::size_t mesh) const { return _meshes[_meshes.size() - 1 - mesh]; }

    std::vector<ObjTiePoint, MemAllocator<ObjTiePoint>> _tiePoints;
    std::vector<UInt32, MemAllocator<UInt32>> _faceSizes;
    std::vector<Mesh, MemAllocator<Mesh>> _meshes;
    std::size_t _faceBegin = 0; ///< first corner of the face that is being collected
};
} // namespace OSG
